#include "src/bridge/ToolCalls.h"

#include "src/base/Log.h"
#include "src/bridge/Presence.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/QBIMMessageSend.h"
#include "src/bridge/qorv_sharedmem_State.h"

namespace quorvane {
namespace {

void describe(Process& process, AEToolEventSelectStruct& record, std::uint32_t cmd) {
  record.commandID = cmd;
  record.zero = 0;
  record.frontProcessID = 0;
  record.frontSignature = FRONTPROCESSSIGNATURE(process);
  Get_FrontApp_AEToolEventSelectStruct(process, record);
}

}  // namespace

std::uint64_t Tick_Count(Process& process) {
  return ticksFromAbsoluteTime(process.platform().clock.mach_absolute_time());
}

void Set_AEToolEventSelectStruct(Process& process, AEToolEventSelectStruct* record,
                                 std::uint32_t cmd) {
  if (record != nullptr) return describe(process, *record, cmd);
  const LastCommandRecord shared(process);
  Log(process, "***** Shared AEToolEventSelectStruct");
  // Without a record the command goes on without its description.
  if (shared) describe(process, *shared.address(), cmd);
}

std::int32_t CallQuorvaneToolCommand(Process& process, std::uint32_t cmd, bool update) {
  if (CheckCurrentCheckStatus(process, update) != 0) return 0;
  return QorvOpenApp(process, cmd);
}

std::int32_t QorvOpenApp(Process& process, std::uint32_t cmd) {
  return GetQORVPROCESSRUNNING(process, nullptr) != 0 ? CallQuorvaneApp(process, cmd) : 0;
}

std::int32_t CallQuorvaneApp(Process& process, std::uint32_t cmd) {
  // Of the application in front before the switch.
  const FourCharCode signature = FRONTPROCESSSIGNATURE(process);
  if (SwitchApplication(process, kQuorvaneSignature) == 0) return 0;
  return CallQorvToolCommandAppEvent(process, cmd, true, signature);
}

std::int32_t CallQorvToolCommandAppEvent(Process& process, std::uint32_t cmd, bool wait,
                                         FourCharCode signature) {
  MasterCloseToolRecPtr(process);
  if (wait) {
    BIM_SendMessageToUIServerWithReply(process, cmd, signature, nullptr);
  } else {
    BIM_SendMessageToUIServer(process, cmd, signature);
  }
  return 0;
}

std::int32_t SwitchApplication(Process& process, FourCharCode signature) {
  ProcessSerialNumber psn;
  if (Get_SPECIFIED_PROCESS(process, signature, psn, nullptr) == 0) return 0;
  return process.platform().processManager.SetFrontProcess(psn) == noErr ? 1 : 0;
}

}  // namespace quorvane
