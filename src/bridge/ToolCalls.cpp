#include "src/bridge/ToolCalls.h"

#include "src/base/Log.h"
#include "src/bridge/Presence.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/QBIMMessageSend.h"
#include "src/bridge/qorv_sharedmem_State.h"

namespace quorvane {
namespace {

void describe(Instance& instance, AEToolEventSelectStruct& record, std::uint32_t cmd) {
  record.commandID = cmd;
  record.zero = 0;
  record.frontProcessID = 0;
  record.frontSignature = FRONTPROCESSSIGNATURE(instance);
  Get_FrontApp_AEToolEventSelectStruct(instance, record);
}

/// Launches the main application. False where nobody waits for the command any more.
bool launchFor(Instance& instance) {
  const std::uint32_t& withdrawals = instance.state<ToolCallState>().withdrawals;
  const std::uint32_t before = withdrawals;
  const std::int32_t front = get_frontapp_pid(instance);
  QorvLaunchApp(instance);
  const bool stays = front == get_frontapp_pid(instance) || isQUORVANEAPP_FRONT(instance) != 0;
  return stays && before == withdrawals;
}

}  // namespace

Ticks Tick_Count(Instance& instance) {
  return ticksFromAbsoluteTime(instance.platform().clock.mach_absolute_time());
}

void Timer_Tickout(Instance& instance, Ticks ticks) {
  const Ticks end = Tick_Count(instance) + ticks;
  while (Tick_Count(instance) < end) continue;
}

void Set_AEToolEventSelectStruct(Instance& instance, AEToolEventSelectStruct* record,
                                 std::uint32_t cmd) {
  if (record != nullptr) return describe(instance, *record, cmd);
  const LastCommandRecord shared(instance);
  Log(instance, "***** Shared AEToolEventSelectStruct");
  // Without a record the command goes on without its description.
  if (shared) describe(instance, *shared.address(), cmd);
}

std::int32_t QorvOpenApp(Instance& instance, std::uint32_t cmd) {
  if (!launchFor(instance)) {
    Log(instance, "Command dropped during the launch");
    return 0;
  }
  return GetQORVPROCESSRUNNING(instance, nullptr) != 0 ? CallQuorvaneApp(instance, cmd) : 0;
}

std::int32_t CallQuorvaneApp(Instance& instance, std::uint32_t cmd) {
  // Of the application in front before the switch.
  const FourCharCode signature = FRONTPROCESSSIGNATURE(instance);
  if (SwitchApplication(instance, kQuorvaneSignature) == 0) return 0;
  return CallQorvToolCommandAppEvent(instance, cmd, true, signature);
}

std::int32_t CallQorvToolCommandAppEvent(Instance& instance, std::uint32_t cmd, bool wait,
                                         FourCharCode signature) {
  MasterCloseToolRecPtr(instance);
  if (wait) {
    BIM_SendMessageToUIServerWithReply(instance, cmd, signature, nullptr);
  } else {
    BIM_SendMessageToUIServer(instance, cmd, signature);
  }
  return 0;
}

std::int32_t SwitchApplication(Instance& instance, FourCharCode signature) {
  ProcessSerialNumber psn;
  if (Get_SPECIFIED_PROCESS(instance, signature, psn, nullptr) == 0) return 0;
  return instance.platform().processManager.SetFrontProcess(psn) == noErr ? 1 : 0;
}

}  // namespace quorvane
