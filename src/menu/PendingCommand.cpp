#include "src/menu/PendingCommand.h"

#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/keys/QBIM_IMK_EventPosting.h"
#include "src/menu/MenuCommand.h"

namespace quorvane {
namespace {

constexpr Seconds kTick{0.25};
constexpr Seconds kBeforeKey{0.2};
constexpr std::uint32_t kKeyTick = 2;
constexpr std::uint32_t kLastTick = 5;
constexpr std::uint32_t kUsualLoops = 3;
// So long a tick holds the thread.
constexpr Microseconds kPauseInKeyTick{160};
constexpr Microseconds kPauseInLastTick{60};
constexpr Microseconds kPauseInCommandTick{115};

// A call within another does nothing but lift the guard of that one.
template <class Step>
void guarded(bool& recursion, const Step& step) {
  if (recursion) {
    recursion = false;
    return;
  }
  const FlagGuard guard(recursion);
  step();
}

void tickOfKey(Instance& instance, PendingCommandState& state) {
  Clock& clock = instance.platform().clock;
  if (++state.doloopcount < kLastTick) {
    clock.usleep(kPauseInKeyTick);
    const bool due = state.doKeyChar != 0 && state.doloopcount == kKeyTick;
    if (due) PostCommandKey(instance, state.doKeyChar);
  } else if (state.doQorvEventLoopTimer) {
    clock.usleep(kPauseInLastTick);
    state.doloopcount = 0;
    state.doQorvEventLoopTimer.reset();
    PostMenuCommand(instance, state.docommandID);
  }
}

void tickOfCommand(Instance& instance, PendingCommandState& state) {
  const std::uint32_t pending = IsMenuCallEvent(instance);
  if (pending != 0 && ++state.loopcount < state.TotalLoops) {
    instance.platform().clock.usleep(kPauseInCommandTick);
    return;
  }
  if (state.QorvEventLoopTimer) {
    state.loopcount = 0;
    instance.state<EventPostingState>().CommandKeyCount = 0;
    state.QorvEventLoopTimer.reset();
  }
  SetMenuCallEvent(instance, 0);
  if (pending == 0) return;
  ++state.commandsOver;
  Do_Menu_Tool_CommandID(instance, pending);
}

}  // namespace

void doInstallCommandEventTimer(Instance& instance, std::uint32_t commandID,
                                std::uint16_t keyChar) {
  auto& state = instance.state<PendingCommandState>();
  state.docommandID = commandID;
  state.doKeyChar = keyChar;
  if (state.doQorvEventLoopTimer) {
    if (keyChar != 0 && state.doloopcount >= kKeyTick) state.doloopcount = 0;
    return;
  }
  state.doQorvEventLoopTimer = instance.platform().runLoop.addTimer(
      kBeforeKey, kTick, [&instance] { doCallQuorvaneToolOnCheckEventCompletion(instance); });
}

void Post_CommandKey_MenuCommand(Instance& instance, std::uint16_t keyChar,
                                 std::uint32_t commandID) {
  doInstallCommandEventTimer(instance, commandID, keyChar);
}

void doCallQuorvaneToolOnCheckEventCompletion(Instance& instance) {
  auto& state = instance.state<PendingCommandState>();
  guarded(state.doRecursion, [&] { tickOfKey(instance, state); });
}

void PostMenuCommand(Instance& instance, std::uint32_t commandID) {
  if (commandID == 0) return;
  if (IsMenuCallEvent(instance) != 0) ++instance.state<PendingCommandState>().commandsOver;
  SetMenuCallEvent(instance, commandID);
  Wake_up_front(instance);
  InstallCommandEventTimer(instance);
}

void SetMenuCallEvent(Instance& instance, std::uint32_t commandID) {
  auto& ownEvent = instance.state<PendingCommandState>().MenuCallEvent;
  const ToolRec record(instance);
  if (record) record.put(ToolCRecPtr_MenuCallEvent, commandID);
  if (!record || commandID == 0) ownEvent = commandID;
}

std::uint32_t IsMenuCallEvent(Instance& instance) {
  const ToolRec record(instance);
  return record ? record.get(ToolCRecPtr_MenuCallEvent)
                : instance.state<PendingCommandState>().MenuCallEvent;
}

void InstallCommandEventTimer(Instance& instance) {
  auto& state = instance.state<PendingCommandState>();
  if (state.QorvEventLoopTimer) return;
  state.TotalLoops = kUsualLoops + instance.state<EventPostingState>().CommandKeyCount;
  state.QorvEventLoopTimer = instance.platform().runLoop.addTimer(
      Seconds{0}, kTick, [&instance] { CallQuorvaneToolOnCheckEventCompletion(instance); });
}

bool isCommandWaiting(Instance& instance) {
  return instance.state<PendingCommandState>().doQorvEventLoopTimer != nullptr ||
         IsMenuCallEvent(instance) != 0;
}

void dropCopyingCommand(Instance& instance) {
  auto& state = instance.state<PendingCommandState>();
  if (state.doKeyChar == 0 || IsMenuCallEvent(instance) == 0) return;
  ++state.commandsOver;
  state.QorvEventLoopTimer.reset();
  state.loopcount = 0;
  SetMenuCallEvent(instance, 0);
}

bool giveUpCommand(Instance& instance) {
  auto& state = instance.state<PendingCommandState>();
  const bool beforeKey =
      state.doQorvEventLoopTimer && state.doloopcount < kKeyTick && IsMenuCallEvent(instance) == 0;
  state.doQorvEventLoopTimer.reset();
  state.QorvEventLoopTimer.reset();
  state.doloopcount = state.loopcount = 0;
  instance.state<EventPostingState>().CommandKeyCount = 0;
  SetMenuCallEvent(instance, 0);
  return !beforeKey;
}

void CallQuorvaneToolOnCheckEventCompletion(Instance& instance) {
  auto& state = instance.state<PendingCommandState>();
  guarded(state.recursion, [&] { tickOfCommand(instance, state); });
}

std::int32_t DoHandleQorvMenuCommandSequence(Instance& instance, std::uint8_t /*keyByte*/) {
  if (IsMenuCallEvent(instance) == 0) return 0;
  InstallCommandEventTimer(instance);
  // What may launch, and wait, is left to the timer: keys typed meanwhile would overtake this one.
  const auto& state = instance.state<PendingCommandState>();
  const bool last = state.loopcount + 1 >= state.TotalLoops;
  if (last && GetQORVPROCESSRUNNING(instance, nullptr) == 0) return 0;
  CallQuorvaneToolOnCheckEventCompletion(instance);
  return 0;
}

}  // namespace quorvane
