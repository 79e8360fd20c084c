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
  explicit MachPortBusy(Instance& instance) : instance_(instance) {
    SET_MACHPORT_BUSY(instance, 1);
  }
  ~MachPortBusy() { SET_MACHPORT_BUSY(instance_, 0); }
  MachPortBusy(const MachPortBusy&) = delete;
  MachPortBusy& operator=(const MachPortBusy&) = delete;

 private:
  Instance& instance_;
};

bool isToolCallBusy(Instance& instance) {
  if (instance.state<MessageSendState>().TOOLCALLBUSY == 0) return false;
  Log(instance, "*** IMK - TOOLCALLBUSY ***");
  return true;
}

FourCharCode frontSignature(Instance& instance) {
  const FourCharCode signature = FRONTPROCESSSIGNATURE(instance);
  if (signature == 0) Log(instance, "IMK - Null process signature");
  if (signature == kUnknownSignature) Log(instance, "IMK - ???? process signature");
  return signature;
}

std::int32_t sendCommand(Instance& instance, std::uint32_t cmd, Mode mode, CFData* reply) {
  auto& state = instance.state<MessageSendState>();
  const MachPortBusy machPort(instance);
  const FlagGuard active(state.AEITEM_Process_active);
  MasterCloseToolRecPtr(instance);
  const FourCharCode signature = frontSignature(instance);
  const FlagGuard busy(state.TOOLCALLBUSY);
  return mode == Mode::SendAndWait
             ? BIM_SendMessageToUIServerWithReply(instance, cmd, signature, reply)
             : BIM_SendMessageToUIServer(instance, cmd, signature);
}

bool isMachPortBusy(Instance& instance) {
  if (IS_MACHPORT_BUSY(instance) == 0) return false;
  Log(instance, "*** IMK - MACHPORT_BUSY ***");
  return true;
}

/// The result of the sending; empty where a guard has dropped the command.
std::optional<std::int32_t> sendUnlessBusy(Instance& instance, std::uint32_t cmd, Mode mode) {
  if (isToolCallBusy(instance) || isMachPortBusy(instance)) return std::nullopt;
  return sendCommand(instance, cmd, mode, nullptr);
}

std::int32_t do_CallDirectQorvToolCommandAppEvent(Instance& instance, std::uint32_t cmd,
                                                  Mode mode) {
  sendUnlessBusy(instance, cmd, mode);
  return 0;
}

}  // namespace

CommandOutcome SendToolCommandAndWait(Instance& instance, std::uint32_t cmd) {
  const auto result = sendUnlessBusy(instance, cmd, Mode::SendAndWait);
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

std::int32_t CallDirectQorvToolCommandAppEvent(Instance& instance, std::uint32_t cmd) {
  return do_CallDirectQorvToolCommandAppEvent(instance, cmd, Mode::Send);
}

std::int32_t CallDirectQorvToolCommandAppEventWait(Instance& instance, std::uint32_t cmd) {
  return do_CallDirectQorvToolCommandAppEvent(instance, cmd, Mode::SendAndWait);
}

std::int32_t Do_BIMCancelInteractive_WindowSession(Instance& instance, std::uint32_t cmd) {
  return CallDirectQorvToolCommandAppEvent(instance, cmd);
}

// Takes the port without asking whether the other side has it.
std::optional<CFData> do_Get_Qorv_Menu_Handle(Instance& instance, std::uint32_t cmd) {
  if (isToolCallBusy(instance)) return std::nullopt;
  CFData reply;
  const std::int32_t result = sendCommand(instance, cmd, Mode::SendAndWait, &reply);
  if (result != 0 || reply.empty()) return std::nullopt;
  return reply;
}

std::optional<CFData> GetQorvSubMenuHandle(Instance& instance) {
  return do_Get_Qorv_Menu_Handle(instance, 8);
}

std::optional<CFData> GetQorvSubMenuHandleSelection(Instance& instance) {
  return do_Get_Qorv_Menu_Handle(instance, 9);
}

std::optional<CFData> GetAutoTypeSubMenuHandle(Instance& instance) {
  return do_Get_Qorv_Menu_Handle(instance, 10);
}

std::optional<CFData> GetAutoTypeFSSpec(Instance& instance) {
  return do_Get_Qorv_Menu_Handle(instance, "pATF"_4cc);
}

}  // namespace quorvane
