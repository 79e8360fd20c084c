#include "src/bridge/QBIMMessageReceive.h"

#include <algorithm>
#include <array>
#include <span>

#include "src/base/Log.h"
#include "src/bridge/BIM_str.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/QBIMMessageSend.h"
#include "src/bridge/qorv_sharedmem_State.h"

namespace quorvane {
namespace {

constexpr std::string_view kOwnPortName = "Q7T2M4K9W1.com.tallowmere.QorvInPortServer";
constexpr std::int32_t kSerialDigits = 16;
constexpr int kExitStatus = -1;
constexpr std::size_t kNumberSize = 4;

constexpr std::int32_t messageId(FourCharCode code) { return static_cast<std::int32_t>(code); }

// The big-endian number at the head of the data; empty where it isn't all there.
std::optional<std::uint32_t> headNumber(const CFData* data) {
  if (data == nullptr || data->size() < kNumberSize) return std::nullopt;
  std::uint32_t value = 0;
  for (const std::uint8_t byte : std::span(*data).first<kNumberSize>()) value = value << 8 | byte;
  return value;
}

std::optional<std::u16string> decode(Process& process, std::span<const std::uint8_t> bytes) {
  TextEncoding& encoding = process.platform().textEncoding;
  auto text = encoding.initWithData(bytes, NSStringEncoding::UTF8);
  return text ? text : encoding.initWithData(bytes, NSStringEncoding::ASCII);
}

void messageInput(Process& process, const CFData* data) {
  MessageTarget* target = process.state<MessageReceiveState>().target;
  if (target == nullptr) return;
  const std::uint64_t session = target->BIMGetActiveSession();
  const auto replaceCount = headNumber(data);
  if (!replaceCount) return;
  const auto text = decode(process, std::span(*data).subspan(kNumberSize));
  if (!text) Log(process, "newStr NULL ERROR");
  target->commitFix(text ? &*text : nullptr, *replaceCount);
  process.platform().inputMethodKit.ownTextFollows();
  if (session != 0 && target->documentTag(session) != 0) target->Update_Document_Session(session);
  Log(process, "DONE");
}

void paste(Process& process, const CFData* data) {
  MessageTarget* target = process.state<MessageReceiveState>().target;
  const auto pid = headNumber(data);
  if (target == nullptr || !pid) return;
  Log(process, "kBasicMessagePaste");
  target->Post_Paste_CommandKey(static_cast<std::int32_t>(*pid));
}

void specialPaste(Process& process, const CFData* data) {
  MessageTarget* target = process.state<MessageReceiveState>().target;
  const auto pid = headNumber(data);
  if (target == nullptr || !pid) return;
  Log(process, "kBasicMessage_DoSpecialPasteCommand");
  target->Post_SpecialPaste_CommandKey(static_cast<std::int32_t>(*pid));
}

void inputMethodQuit(Process& process, const CFData* /*data*/) {
  QuitQuorvaneMenulet(process);
  Log(process, "input method exit");
  DelegateCloseToolRecPtr(process);
  process.platform().application.exit(kExitStatus);
}

void updateDocument(Process& process, const CFData* /*data*/) {
  MessageTarget* target = process.state<MessageReceiveState>().target;
  const std::uint64_t session = target != nullptr ? target->BIMGetActiveSession() : 0;
  if (session != 0) target->Update_Document_Session(session);
}

void stateVersion(Process& process, const CFData* /*data*/) { Init_Toolversion(process); }

void quitMenulet(Process& process, const CFData* /*data*/) { BIMQuitMenulet(process); }

void nothing(Process& /*process*/, const CFData* /*data*/) {}

struct Message {
  std::int32_t id;
  void (*handle)(Process& process, const CFData* data);
};
constexpr std::array<Message, 11> kMessages{{{kBasicMessageInput, messageInput},
                                             {220, nothing},
                                             {kBasicMessage_DockCommand, nothing},
                                             {240, nothing},
                                             {kBasicMessagePaste, paste},
                                             {kBasicMessage_DoSpecialPasteCommand, specialPaste},
                                             {messageId("IMqt"_4cc), inputMethodQuit},
                                             {messageId("Updt"_4cc), updateDocument},
                                             {messageId("gInt"_4cc), stateVersion},
                                             {messageId("gMen"_4cc), quitMenulet},
                                             {messageId("oMen"_4cc), nothing}}};

CFMessagePortCallBack callBack(Process& process) {
  const std::weak_ptr<const bool> alive = process.state<MessageReceiveState>().alive;
  return [&process, alive](std::int32_t id, const CFData* data) -> std::optional<CFData> {
    if (alive.expired()) return std::nullopt;
    return BIMMessagePortCallBack(process, id, data);
  };
}

}  // namespace

void setMessageTarget(Process& process, MessageTarget* target) {
  process.state<MessageReceiveState>().target = target;
}

std::int32_t BIMInitializeMessageReceiving(Process& process) {
  Log(process, "BIMInitializeMessageReceiving");
  Platform& platform = process.platform();
  ProcessSerialNumber serial;
  const OSStatus status = platform.processManager.GetCurrentProcess(serial);
  if (status != noErr) return status;
  const auto port = platform.messagePorts.CFMessagePortCreateLocal(
      BIMCreatePortName(process, serial), callBack(process));
  if (!port) return -1;
  CFRunLoop* loop = platform.runLoop.CFRunLoopGetCurrent();
  if (loop == nullptr) return -2;
  auto source = platform.messagePorts.CFMessagePortCreateRunLoopSource(port);
  if (!source) return -3;
  // From here on the run loop holds what is needed.
  platform.runLoop.CFRunLoopAddSource(*loop, std::move(source));
  return 0;
}

std::string BIMCreatePortName(Process& /*process*/, const ProcessSerialNumber& serial) {
  std::array<std::uint8_t, 2 * kSerialDigits + 1> digits{};
  const std::int32_t high = dectostr(serial.highLongOfPSN, kSerialDigits, digits.data());
  dectostr(serial.lowLongOfPSN, kSerialDigits, digits.data() + high);
  return std::string(kOwnPortName) + reinterpret_cast<const char*>(digits.data());
}

std::optional<CFData> BIMMessagePortCallBack(Process& process, std::int32_t id,
                                             const CFData* data) {
  const auto* known = std::find_if(kMessages.begin(), kMessages.end(),
                                   [&](const Message& message) { return message.id == id; });
  if (known != kMessages.end()) {
    known->handle(process, data);
  } else {
    Log(process, "*** BIMMessagePortCallBack InputMethod");
  }
  return std::nullopt;
}

std::optional<CFData> Convert_ASCIITo_Unicode(Process& process, const std::uint8_t* text,
                                              std::uint32_t length) {
  CFData block(std::size_t{4} * length);
  const std::ptrdiff_t written =
      process.platform().textEncoding.TECConvertText({text, length}, block.data(), block.size());
  if (written < 0 || static_cast<std::size_t>(written) > block.size()) return std::nullopt;
  block.resize(static_cast<std::size_t>(written));
  return block;
}

}  // namespace quorvane
