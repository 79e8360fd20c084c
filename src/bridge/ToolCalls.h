#pragma once
// Commands to the main application. Routes, each with its own guarantee:
//
//   flag           a bit in ToolCRecPtr_USEFLAGS2, found by polling; doesn't wait
//   flag, waiting  the same, then spins until the bit is clear, up to 120 ticks
//   message        a message to the server port, with or without waiting for the reply
//   opening        brings the main application to the front, then a message with reply
//
// Everything runs on the main thread. Waits end because the clock advances; they never sleep. What
// a guard stops is lost, not queued.

#include <array>
#include <optional>

#include "platform/Units.h"
#include "src/base/Instance.h"
#include "src/bridge/SharedLayout.h"

namespace quorvane {

struct ToolCallState {
  std::uint32_t withdrawals = 0;  ///< of what a command that is under way was about
};

Ticks Tick_Count(Instance& instance);
/// Spins until so many have passed.
void Timer_Tickout(Instance& instance, Ticks ticks);
/// What Tick_Count makes of a clock that counts nanoseconds.
constexpr Ticks ticksFromAbsoluteTime(std::uint64_t t) {
  constexpr std::uint64_t kMultiplier = 0x80D9594E;
  return Ticks(((t >> 32) * kMultiplier + (((t & 0xFFFFFFFF) * kMultiplier) >> 32)) >> 23);
}

// The flag route.

/// Commands outside the table do nothing.
void Do_BIM_CallDirectQorvToolCommandAppEvent(Instance& instance, std::uint32_t cmd);
void Do_Check_ToolCRecPtr_USEFLAGS2(Instance& instance, std::uint32_t bit, std::uint32_t cmd);
void Do_BIMCancelWindowSession(Instance& instance);
void Do_BIMCancelPopupWindowSession(Instance& instance);
void Do_BIMShowHideWindowSession(Instance& instance);
void Do_UpdateDictionarySettings(Instance& instance);

// The flag route, waiting. Always 0; on a timeout the request bit stays set.

/// 87, 108 and 16390; any other does nothing.
std::int32_t Do_BIM_CallDirectQorvToolCommandAppEvent_Wait(Instance& instance, std::uint32_t cmd);
std::int32_t do_CallDirectQorvToolCommandAppEventWait(Instance& instance, std::uint32_t bit,
                                                      std::uint32_t cmd);
std::int32_t Do_Check_ToolCRecPtr_USEFLAGS2_Wait(Instance& instance, std::uint32_t bit,
                                                 std::uint32_t cmd);
/// Has the sentence being typed scanned; waits up to 6 ticks. It stands in the key path. True: the
/// main application has ended it.
bool Do_checktypingSentScan(Instance& instance);

/// A copy of the menu buffer record.
using MenuBuffer = std::array<std::uint8_t, kMenuBufferSize>;
/// Asks for the writing-style list and waits. Empty where there is no data.
std::optional<MenuBuffer> do_New_Get_Qorv_Menu_Handle(Instance& instance, std::uint32_t ignored);

// The message route.

enum class CommandOutcome {
  Dropped,       ///< by a guard
  NotDelivered,  ///< nobody serves the port, it is full, or who served it has gone
  NotAnswered,   ///< in time; whoever has it may act on it still
  Answered
};
/// Sends the command and waits for the reply.
CommandOutcome SendToolCommandAndWait(Instance& instance, std::uint32_t cmd);

// The same by the names that tell nothing of it. Always 0.

std::int32_t CallDirectQorvToolCommandAppEvent(Instance& instance, std::uint32_t cmd);
std::int32_t CallDirectQorvToolCommandAppEventWait(Instance& instance, std::uint32_t cmd);
std::int32_t Do_BIMCancelInteractive_WindowSession(Instance& instance, std::uint32_t cmd);

/// Reply data of a command; empty where none came.
std::optional<CFData> do_Get_Qorv_Menu_Handle(Instance& instance, std::uint32_t cmd);
std::optional<CFData> GetQorvSubMenuHandle(Instance& instance);
std::optional<CFData> GetQorvSubMenuHandleSelection(Instance& instance);
std::optional<CFData> GetAutoTypeSubMenuHandle(Instance& instance);
std::optional<CFData> GetAutoTypeFSSpec(Instance& instance);

// Steps of the opening route, which begins in src/menu. Always 0, save SwitchApplication.

/// Starts the main application where it doesn't run, and waits for it with the run loop turning.
/// Where the command is withdrawn meanwhile, or another application comes to the front, it is
/// dropped.
std::int32_t QorvOpenApp(Instance& instance, std::uint32_t cmd);
std::int32_t CallQuorvaneApp(Instance& instance, std::uint32_t cmd);
std::int32_t CallQorvToolCommandAppEvent(Instance& instance, std::uint32_t cmd, bool wait,
                                         FourCharCode signature);
/// Brings the first process with the signature to the front: 1.
std::int32_t SwitchApplication(Instance& instance, FourCharCode signature);

/// Describes the command to the main application. A null record means segment 896, for this once.
void Set_AEToolEventSelectStruct(Instance& instance, AEToolEventSelectStruct* record,
                                 std::uint32_t cmd);

}  // namespace quorvane
