#include "src/shell/QBIMMessageReceive.h"

#include <algorithm>
#include <array>
#include <span>

#include "src/base/BigEndian.h"
#include "src/base/Log.h"
#include "src/bridge/BIM_str.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/QBIMMessageSend.h"
#include "src/bridge/qorv_sharedmem_State.h"
#include "src/keys/QBIM_Paste_IMK.h"
#include "src/menu/MenuCommand.h"
#include "src/session/FixGuard.h"
#include "src/session/QBIM_IMK_Publication.h"
#include "src/session/QuorvaneInputController_Commit.h"

namespace quorvane {
namespace {

constexpr std::string_view kOwnPortName = "Q7T2M4K9W1.com.tallowmere.QorvInPortServer";
constexpr std::int32_t kSerialDigits = 16;
constexpr int kExitStatus = -1;
constexpr std::size_t kNumberSize = sizeof(std::uint32_t);

constexpr std::int32_t messageId(FourCharCode code) { return static_cast<std::int32_t>(code); }

// The big-endian number at the head of the data; empty where it isn't all there.
std::optional<std::uint32_t> headNumber(const CFData* data) {
  if (data == nullptr || data->size() < kNumberSize) return std::nullopt;
  return bigEndianNumber<std::uint32_t>(*data);
}

std::optional<std::u16string> decode(Instance& instance, std::span<const std::uint8_t> bytes) {
  TextEncoding& encoding = instance.platform().textEncoding;
  auto text = encoding.initWithData(bytes, NSStringEncoding::UTF8);
  return text ? text : encoding.initWithData(bytes, NSStringEncoding::ASCII);
}

// The text, which the main application writes first, is there before its message is judged. Null:
// the message has no text, and what the shared record says of it doesn't hold either.
void commitFix(Instance& instance, const std::u16string* text, Utf16Units replaceLength) {
  Check_Update_Document_Session_Buffer(instance, nullptr);
  const auto fault =
      text != nullptr ? faultOf(instance, *text, replaceLength) : FixFault::Unreadable;
  if (fault) return dropFix(instance, *fault);
  if (!Do_nsstring_commit_to_composition(instance, *text, replaceLength)) {
    return dropFix(instance, FixFault::BeyondCaret);
  }
  keepFix(instance, {static_cast<std::uint32_t>(text->size())});
  instance.platform().inputMethodKit.ownTextFollows();
}

// Nothing where the session has gone meanwhile, or its document isn't marked for it.
void refreshDocument(Instance& instance, SessionHandle handle) {
  BIMSessionRec* const session = findSession(instance, handle);
  if (session != nullptr && session->documentTag != 0) Update_Document_Session(instance, session);
}

void messageInput(Instance& instance, const CFData* data) {
  const BIMSessionRec* const session = BIMGetActiveSession(instance);
  const auto handle = session != nullptr ? session->handle : SessionHandle::None;
  const auto replaceCount = headNumber(data);
  if (!replaceCount) return;
  const auto text = decode(instance, std::span(*data).subspan(kNumberSize));
  if (!text) Log(instance, "newStr NULL ERROR");
  commitFix(instance, text ? &*text : nullptr, {*replaceCount});
  refreshDocument(instance, handle);
  Log(instance, "DONE");
}

void paste(Instance& instance, const CFData* data) {
  const auto pid = headNumber(data);
  if (!pid) return;
  Log(instance, "kBasicMessagePaste");
  Post_Paste_CommandKey(instance, static_cast<std::int32_t>(*pid));
}

void specialPaste(Instance& instance, const CFData* data) {
  const auto pid = headNumber(data);
  if (!pid) return;
  Log(instance, "kBasicMessage_DoSpecialPasteCommand");
  Post_SpecialPaste_CommandKey(instance, static_cast<std::int32_t>(*pid));
}

void inputMethodQuit(Instance& instance, const CFData* /*data*/) {
  QuitQuorvaneMenulet(instance);
  Log(instance, "input method exit");
  DelegateCloseToolRecPtr(instance);
  instance.platform().application.exit(kExitStatus);
}

void updateDocument(Instance& instance, const CFData* /*data*/) {
  Update_Document_Session(instance, nullptr);  // of the active session
}

void stateVersion(Instance& instance, const CFData* /*data*/) { Init_Toolversion(instance); }

void quitMenulet(Instance& instance, const CFData* /*data*/) { BIMQuitMenulet(instance); }

void openMenulet(Instance& instance, const CFData* /*data*/) { LaunchQuorvaneMenulet(instance); }

void dockCommand(Instance& instance, const CFData* data) {
  const auto command = headNumber(data);
  if (command) do_QorvMain_Do_Menu_Tool_CommandID(instance, *command);
}

void nothing(Instance& /*process*/, const CFData* /*data*/) {}

struct Message {
  std::int32_t id;
  void (*handle)(Instance& instance, const CFData* data);
};
constexpr std::array<Message, 11> kMessages{{{kBasicMessageInput, messageInput},
                                             {220, nothing},
                                             {kBasicMessage_DockCommand, dockCommand},
                                             {240, nothing},
                                             {kBasicMessagePaste, paste},
                                             {kBasicMessage_DoSpecialPasteCommand, specialPaste},
                                             {messageId("IMqt"_4cc), inputMethodQuit},
                                             {messageId("Updt"_4cc), updateDocument},
                                             {messageId("gInt"_4cc), stateVersion},
                                             {messageId("gMen"_4cc), quitMenulet},
                                             {messageId("oMen"_4cc), openMenulet}}};

CFMessagePortCallBack callBack(Instance& instance) {
  const std::weak_ptr<const bool> alive = instance.state<MessageReceiveState>().alive;
  return [&instance, alive](std::int32_t id, const CFData* data) -> std::optional<CFData> {
    if (alive.expired()) return std::nullopt;
    return BIMMessagePortCallBack(instance, id, data);
  };
}

}  // namespace

std::int32_t BIMInitializeMessageReceiving(Instance& instance) {
  Log(instance, "BIMInitializeMessageReceiving");
  Platform& platform = instance.platform();
  ProcessSerialNumber serial;
  const OSStatus status = platform.processManager.GetCurrentProcess(serial);
  if (status != noErr) return status;
  const auto port = platform.messagePorts.CFMessagePortCreateLocal(
      BIMCreatePortName(instance, serial), callBack(instance));
  if (!port) return -1;
  CFRunLoop* loop = platform.runLoop.CFRunLoopGetCurrent();
  if (loop == nullptr) return -2;
  auto source = platform.messagePorts.CFMessagePortCreateRunLoopSource(port);
  if (!source) return -3;
  // From here on the run loop holds what is needed.
  platform.runLoop.CFRunLoopAddSource(*loop, std::move(source));
  return 0;
}

std::string BIMCreatePortName(Instance& /*process*/, const ProcessSerialNumber& serial) {
  std::array<std::uint8_t, 2 * kSerialDigits + 1> digits{};
  const std::int32_t high = dectostr(serial.highLongOfPSN, kSerialDigits, digits.data());
  dectostr(serial.lowLongOfPSN, kSerialDigits, digits.data() + high);
  return std::string(kOwnPortName) + reinterpret_cast<const char*>(digits.data());
}

std::optional<CFData> BIMMessagePortCallBack(Instance& instance, std::int32_t id,
                                             const CFData* data) {
  const auto* known = std::find_if(kMessages.begin(), kMessages.end(),
                                   [&](const Message& message) { return message.id == id; });
  if (known != kMessages.end()) {
    known->handle(instance, data);
  } else {
    Log(instance, "*** BIMMessagePortCallBack InputMethod");
    do_QorvMain_Do_Menu_Tool_CommandID(instance, static_cast<std::uint32_t>(id));
  }
  return std::nullopt;
}

}  // namespace quorvane
