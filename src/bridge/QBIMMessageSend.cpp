#include "src/bridge/QBIMMessageSend.h"

#include <array>
#include <cstring>
#include <span>

#include "src/base/Log.h"
#include "src/bridge/Presence.h"
#include "src/bridge/SharedLayout.h"

namespace quorvane {
namespace {

constexpr double kLongWait = 1600.0;  // seconds
constexpr double kShortWait = 10.0;
constexpr std::uint32_t kAppMessage = 100;
constexpr std::uint32_t kQuitMenulet = "gMen"_4cc;

constexpr std::size_t kMenuletPayloadSize = 32;
constexpr std::size_t kMenuletSenderOffset = 24;

using ServerPayload = std::array<std::uint8_t, sizeof(AEToolEventSelectStruct)>;

// Host byte order; what the receiver ignores is 0.
ServerPayload serverPayload(std::uint32_t cmd, FourCharCode signature) {
  AEToolEventSelectStruct content;
  content.commandID = cmd;
  content.frontSignature = signature;
  ServerPayload payload;
  std::memcpy(payload.data(), &content, payload.size());
  return payload;
}

std::shared_ptr<CFMessagePort> serverPort(Process& process) {
  auto port = process.platform().messagePorts.CFMessagePortCreateRemote(kBasicAppPortName);
  if (!port) Log(process, "******** CFMessagePortCreateRemote kBasicAppPortName ERROR");
  return port;
}

std::int32_t send(Process& process, CFMessagePort& port, std::uint32_t id,
                  std::span<const std::uint8_t> payload, double timeout, CFData* reply) {
  return process.platform().messagePorts.CFMessagePortSendRequest(
      port, static_cast<std::int32_t>(id), payload, timeout, timeout, reply);
}

// The port of the waiting send: the cached one where the peer can't be reached any more.
std::shared_ptr<CFMessagePort> cachedServerPort(Process& process) {
  auto& cached = process.state<MessageSendState>().gm_serverPortRef;
  auto port = process.platform().messagePorts.CFMessagePortCreateRemote(kBasicAppPortName);
  if (port && port != cached) cached = std::move(port);
  return cached;
}

void logReplyError(Process& process, std::int32_t result) {
  Log(process, "IMK CFMessagePortSendRequest - result ", result);
  if (result == kCFMessagePortReceiveTimeout) {
    Log(process, "IMK kCFMessagePortReceiveTimeout - result ", result);
  } else if (result == kCFMessagePortSendTimeout) {
    Log(process, "IMK kCFMessagePortSendTimeout - result ", result);
  }
}

}  // namespace

std::int32_t BIM_SendMessageToUIServer(Process& process, std::uint32_t cmd,
                                       FourCharCode signature) {
  const auto port = serverPort(process);
  if (!port) return kNoPort;
  const std::int32_t sent = send(process, *port, cmd, serverPayload(cmd, signature), 0.0, nullptr);
  Log(process, "IMK BIM_SendMessageToUIServer");
  return sent == kCFMessagePortSuccess ? 0 : kSendFailed;
}

std::int32_t BIM_SendMessageToUIServerWithReply(Process& process, std::uint32_t cmd,
                                                FourCharCode signature, CFData* replyOut) {
  // Our own hold: what runs while we wait may put another port into the cache.
  const auto port = cachedServerPort(process);
  if (!port) {
    Log(process, "******** CFMessagePortCreateRemote kBasicAppPortName ERROR");
    // The label doesn't say what it means; it is known by it.
    Log(process, "IMK kCFMessagePortSuccess - result ", kNoPortWithReply);
    return kNoPortWithReply;
  }
  CFData unread;
  CFData* reply = replyOut != nullptr ? replyOut : &unread;
  const std::int32_t result =
      send(process, *port, cmd, serverPayload(cmd, signature), kLongWait, reply);
  if (result != kCFMessagePortSuccess) logReplyError(process, result);
  return result;
}

std::int32_t BIMSendMessageToAppServerWithReply(Process& process, std::uint32_t id,
                                                std::uint32_t /*ignored*/) {
  const auto port = serverPort(process);
  if (!port) return kNoPort;
  CFData unread;
  const auto payload = serverPayload(id, FRONTPROCESSSIGNATURE(process));
  return send(process, *port, id, payload, kShortWait, &unread) == kCFMessagePortSuccess
             ? 0
             : kSendFailed;
}

std::int32_t BIMSendAppMessage(Process& process, std::uint32_t value) {
  process.platform().console.print("BIMSendAppMessage\n");
  return BIMSendMessageToAppServerWithReply(process, kAppMessage, value);
}

std::int32_t CallDirectQorvBIMSendAppMessage(Process& process, std::uint32_t value) {
  BIMSendAppMessage(process, value);
  return 1;
}

std::int32_t BIMSendMessageToMenuletServer(Process& process, std::uint32_t id) {
  const auto port =
      process.platform().messagePorts.CFMessagePortCreateRemote(kBasicMenuletPortName);
  if (!port) {
    Log(process, "******** CFMessagePortCreateRemote kBasicMenuletPortName ERROR");
    return kNoPort;
  }
  ProcessSerialNumber sender;
  const OSStatus status = process.platform().processManager.GetCurrentProcess(sender);
  if (status != noErr) return status;
  std::array<std::uint8_t, kMenuletPayloadSize> payload{};
  static_assert(kMenuletSenderOffset + sizeof(sender) == kMenuletPayloadSize);
  std::memcpy(payload.data() + kMenuletSenderOffset, &sender, sizeof(sender));
  return send(process, *port, id, payload, 0.0, nullptr) == kCFMessagePortSuccess ? 0 : kSendFailed;
}

std::int32_t BIMQuitMenulet(Process& process) {
  Log(process, "******* BIMQuitMenulet  QuitQuorvaneMenulet ***************");
  return BIMSendMessageToMenuletServer(process, kQuitMenulet);
}

std::uint8_t is_AEITEM_Process_active(Process& process) {
  return process.state<MessageSendState>().AEITEM_Process_active;
}

}  // namespace quorvane
