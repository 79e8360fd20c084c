#include <algorithm>
#include <cstring>
#include <span>

#include "src/base/Log.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/ToolCalls.h"
#include "src/bridge/qorv_sharedmem.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kWaitingBusyBit = 1;

// A wait spins: the clock is read once in so many rounds, the awaited bit tested in every other
// pair of rounds.
struct Wait {
  std::uint32_t field;
  std::uint32_t bit;
  Ticks longest;
  std::uint32_t roundsPerReading;
};

// True where the other process cleared the bit in time. `now` stays 0 until the first reading, so
// that the deadline can't end the wait before it.
bool spinUntilClear(Instance& instance, const ToolRec& record, const Wait& wait, Ticks start) {
  const Ticks deadline = start + wait.longest;
  const std::uint32_t mask = std::uint32_t{1} << wait.bit;
  Ticks now{};
  std::uint32_t rounds = 0;
  while (now < deadline) {
    ++rounds;
    if (rounds > wait.roundsPerReading) {
      now = Tick_Count(instance);
      rounds = 0;
    }
    if ((rounds & 2) != 0 && (record.get(wait.field) & mask) == 0) return true;
  }
  return false;
}

/// A bit of a field, set for as long as this lives.
class FieldBit {
 public:
  FieldBit(const ToolRec& record, std::uint32_t field, std::uint32_t bit)
      : record_(record), field_(field), bit_(bit) {
    record_.setBit(field, bit);
  }
  ~FieldBit() { record_.clearBit(field_, bit_); }
  FieldBit(const FieldBit&) = delete;
  FieldBit& operator=(const FieldBit&) = delete;

 private:
  const ToolRec& record_;
  std::uint32_t field_;
  std::uint32_t bit_;
};

const CommandBit* find(std::span<const CommandBit> table, std::uint32_t cmd) {
  const auto found =
      std::find_if(table.begin(), table.end(), [&](const auto& row) { return row.cmd == cmd; });
  return found == table.end() ? nullptr : &*found;
}

void do_CallDirectQorvToolCommandAppEvent(Instance& instance, std::uint32_t bit,
                                          std::uint32_t cmd) {
  Do_Check_ToolCRecPtr_USEFLAGS2(instance, bit, cmd);
}

void waitForRequest(Instance& instance, const ToolRec& record, std::uint32_t bit) {
  record.setBit(ToolCRecPtr_USEFLAGS2, bit);
  const FieldBit busy(record, ToolCRecPtr_unusedx2, kWaitingBusyBit);
  const Wait wait{ToolCRecPtr_USEFLAGS2, bit, Ticks(120), 40};
  if (!spinUntilClear(instance, record, wait, Tick_Count(instance))) {
    Log(instance, "***************** ToolCRecPtr_USEFLAGS2_Wait TIMEOUT");
  }
}

std::optional<MenuBuffer> copyMenuBuffer(Instance& instance) {
  const MenuBufferRecord record(instance);
  if (!record) return std::nullopt;
  MenuBuffer copy;
  std::memcpy(copy.data(), record.address(), copy.size());
  const auto* count = copy.begin() + kMenuCountOffset;
  const bool hasData = std::any_of(count, count + 4, [](auto b) { return b != 0; });
  return hasData ? std::optional(copy) : std::nullopt;
}

}  // namespace

void Do_BIM_CallDirectQorvToolCommandAppEvent(Instance& instance, std::uint32_t cmd) {
  if (const CommandBit* row = find(kCommandBits, cmd)) {
    do_CallDirectQorvToolCommandAppEvent(instance, row->bit, cmd);
  }
}

void Do_Check_ToolCRecPtr_USEFLAGS2(Instance& instance, std::uint32_t bit, std::uint32_t cmd) {
  if (cmd == kShowHideWindowCommand || cmd == kCloseWindowCommand) WakeUpQuorvaneProcess(instance);
  Set_AEToolEventSelectStruct(instance, nullptr, cmd);
  const ToolRec record(instance);
  if (!record) {
    Log(instance, "No Shared Mem (Do_Check_ToolCRecPtr_USEFLAGS2)");
    return;
  }
  Log(instance, "Do_Check_ToolCRecPtr_USEFLAGS2 send, ", cmd);
  const std::uint32_t requests = record.get(ToolCRecPtr_USEFLAGS2);
  if (bit < 32 && (requests >> bit & 1) == 0) {
    record.setBit(ToolCRecPtr_USEFLAGS2, bit);
  }
  Log(instance, "Do_Check_ToolCRecPtr_USEFLAGS2 done");
}

void Do_BIMCancelWindowSession(Instance& instance) {
  do_CallDirectQorvToolCommandAppEvent(instance, 0, kCloseWindowCommand);
}

void Do_BIMCancelPopupWindowSession(Instance& instance) {
  do_CallDirectQorvToolCommandAppEvent(instance, 1, kCloseWindowCommand);
}

void Do_BIMShowHideWindowSession(Instance& instance) {
  Do_BIM_CallDirectQorvToolCommandAppEvent(instance, kShowHideWindowCommand);
}

void Do_UpdateDictionarySettings(Instance& instance) {
  Do_BIM_CallDirectQorvToolCommandAppEvent(instance, kDictionarySettingsCommand);
}

std::int32_t Do_BIM_CallDirectQorvToolCommandAppEvent_Wait(Instance& instance, std::uint32_t cmd) {
  const CommandBit* row = find(kWaitingCommandBits, cmd);
  return row == nullptr ? 0 : do_CallDirectQorvToolCommandAppEventWait(instance, row->bit, cmd);
}

std::int32_t do_CallDirectQorvToolCommandAppEventWait(Instance& instance, std::uint32_t bit,
                                                      std::uint32_t cmd) {
  return Do_Check_ToolCRecPtr_USEFLAGS2_Wait(instance, bit, cmd);
}

std::int32_t Do_Check_ToolCRecPtr_USEFLAGS2_Wait(Instance& instance, std::uint32_t bit,
                                                 std::uint32_t cmd) {
  Log(instance, "Do_Check_ToolCRecPtr_USEFLAGS2_Wait send");
  Set_AEToolEventSelectStruct(instance, nullptr, cmd);
  if (const ToolRec record(instance); record && bit < 32) waitForRequest(instance, record, bit);
  Log(instance, "Do_Check_ToolCRecPtr_USEFLAGS2_Wait done");
  return 0;
}

bool Do_checktypingSentScan(Instance& instance) {
  Log(instance, "Call Do_checktypingSentScan");
  const ToolRec record(instance);
  if (!record) {
    Log(instance, "Failed to open com bridge");
    return false;
  }
  record.setBit(ToolCRecPtr_USEFLAGS2, kSentenceScanBit);
  const FieldBit asked(record, ToolCRecPtr_ScanFlags, kSentenceScanBit);
  const FieldBit busy(record, ToolCRecPtr_unusedx2, kSentenceScanBit);
  WakeUpQuorvaneProcess(instance);
  Set_AEToolEventSelectStruct(instance, nullptr, kScanSentenceCommand);
  const Ticks start = Tick_Count(instance);
  const bool answered = spinUntilClear(
      instance, record, {ToolCRecPtr_ScanFlags, kSentenceScanBit, Ticks(6), 15}, start);
  if (answered) Log(instance, "notfinished ticks ", (Tick_Count(instance) - start).count());
  return answered;
}

std::optional<MenuBuffer> do_New_Get_Qorv_Menu_Handle(Instance& instance,
                                                      std::uint32_t /*ignored*/) {
  Log(instance, "do_New_Get_Qorv_Menu_Handle");
  do_CallDirectQorvToolCommandAppEventWait(instance, kWritingStylesBit.bit, kWritingStylesBit.cmd);
  auto buffer = copyMenuBuffer(instance);
  Log(instance, "do_New_Get_Qorv_Menu_Handle DONE");
  return buffer;
}

}  // namespace quorvane
