#include "src/base/Log.h"
#include "src/bridge/Presence.h"
#include "src/bridge/QBIMMessageSend.h"
#include "src/bridge/ToolCalls.h"
#include "src/bridge/qorv_sharedmem_State.h"

namespace quorvane {
namespace {

enum class Mode { Send = 1, SendAndWait = 3 };

constexpr FourCharCode kUnknownSignature = "????"_4cc;

/// The server port is ours, in both processes' eyes, from the preparation of a command to the end
/// of its sending.
class MachPortBusy {
 public:
  explicit MachPortBusy(Process& process) : process_(process) { SET_MACHPORT_BUSY(process, 1); }
  ~MachPortBusy() { SET_MACHPORT_BUSY(process_, 0); }
  MachPortBusy(const MachPortBusy&) = delete;
  MachPortBusy& operator=(const MachPortBusy&) = delete;

 private:
  Process& process_;
};

bool isToolCallBusy(Process& process) {
  if (process.state<MessageSendState>().TOOLCALLBUSY == 0) return false;
  Log(process, "*** IMK - TOOLCALLBUSY ***");
  return true;
}

FourCharCode frontSignature(Process& process) {
  const FourCharCode signature = FRONTPROCESSSIGNATURE(process);
  if (signature == 0) Log(process, "IMK - Null process signature");
  if (signature == kUnknownSignature) Log(process, "IMK - ???? process signature");
  return signature;
}

std::int32_t sendCommand(Process& process, std::uint32_t cmd, Mode mode, CFData* reply) {
  auto& state = process.state<MessageSendState>();
  const MachPortBusy machPort(process);
  const FlagGuard active(state.AEITEM_Process_active);
  MasterCloseToolRecPtr(process);
  const FourCharCode signature = frontSignature(process);
  const FlagGuard busy(state.TOOLCALLBUSY);
  return mode == Mode::SendAndWait
             ? BIM_SendMessageToUIServerWithReply(process, cmd, signature, reply)
             : BIM_SendMessageToUIServer(process, cmd, signature);
}

bool isMachPortBusy(Process& process) {
  if (IS_MACHPORT_BUSY(process) == 0) return false;
  Log(process, "*** IMK - MACHPORT_BUSY ***");
  return true;
}

/// The result of the sending; empty where a guard has dropped the command.
std::optional<std::int32_t> sendUnlessBusy(Process& process, std::uint32_t cmd, Mode mode) {
  if (isToolCallBusy(process) || isMachPortBusy(process)) return std::nullopt;
  return sendCommand(process, cmd, mode, nullptr);
}

std::int32_t do_CallDirectQorvToolCommandAppEvent(Process& process, std::uint32_t cmd, Mode mode) {
  sendUnlessBusy(process, cmd, mode);
  return 0;
}

}  // namespace

CommandOutcome SendToolCommandAndWait(Process& process, std::uint32_t cmd) {
  const auto result = sendUnlessBusy(process, cmd, Mode::SendAndWait);
  if (!result) return CommandOutcome::Dropped;
  switch (*result) {
    case kCFMessagePortSuccess:
      return CommandOutcome::Answered;
    case kCFMessagePortReceiveTimeout:
      return CommandOutcome::NotAnswered;
    default:
      return CommandOutcome::NotDelivered;
  }
}

std::int32_t CallDirectQorvToolCommandAppEvent(Process& process, std::uint32_t cmd) {
  return do_CallDirectQorvToolCommandAppEvent(process, cmd, Mode::Send);
}

std::int32_t CallDirectQorvToolCommandAppEventWait(Process& process, std::uint32_t cmd) {
  return do_CallDirectQorvToolCommandAppEvent(process, cmd, Mode::SendAndWait);
}

std::int32_t Do_BIMCancelInteractive_WindowSession(Process& process, std::uint32_t cmd) {
  return CallDirectQorvToolCommandAppEvent(process, cmd);
}

// Takes the port without asking whether the other side has it.
std::optional<CFData> do_Get_Qorv_Menu_Handle(Process& process, std::uint32_t cmd) {
  if (isToolCallBusy(process)) return std::nullopt;
  CFData reply;
  const std::int32_t result = sendCommand(process, cmd, Mode::SendAndWait, &reply);
  if (result != 0 || reply.empty()) return std::nullopt;
  return reply;
}

std::optional<CFData> GetQorvSubMenuHandle(Process& process) {
  return do_Get_Qorv_Menu_Handle(process, 8);
}

std::optional<CFData> GetQorvSubMenuHandleSelection(Process& process) {
  return do_Get_Qorv_Menu_Handle(process, 9);
}

std::optional<CFData> GetAutoTypeSubMenuHandle(Process& process) {
  return do_Get_Qorv_Menu_Handle(process, 10);
}

std::optional<CFData> GetAutoTypeFSSpec(Process& process) {
  return do_Get_Qorv_Menu_Handle(process, "pATF"_4cc);
}

}  // namespace quorvane
