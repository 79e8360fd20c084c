#include "src/bridge/QBIMMessageSend.h"

#include <array>
#include <cstring>
#include <span>

#include "src/base/Log.h"
#include "src/bridge/Presence.h"
#include "src/bridge/SharedLayout.h"

namespace quorvane {
namespace {

constexpr Seconds kLongWait{1600};
constexpr Seconds kShortWait{10};
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

std::shared_ptr<CFMessagePort> serverPort(Instance& instance) {
  auto port = instance.platform().messagePorts.CFMessagePortCreateRemote(kBasicAppPortName);
  if (!port) Log(instance, "******** CFMessagePortCreateRemote kBasicAppPortName ERROR");
  return port;
}

std::int32_t send(Instance& instance, CFMessagePort& port, std::uint32_t id,
                  std::span<const std::uint8_t> payload, Seconds timeout, CFData* reply) {
  return instance.platform().messagePorts.CFMessagePortSendRequest(
      port, static_cast<std::int32_t>(id), payload, timeout, timeout, reply);
}

// The port of the waiting send: the cached one where the peer can't be reached any more.
std::shared_ptr<CFMessagePort> cachedServerPort(Instance& instance) {
  auto& cached = instance.state<MessageSendState>().gm_serverPortRef;
  auto port = instance.platform().messagePorts.CFMessagePortCreateRemote(kBasicAppPortName);
  if (port && port != cached) cached = std::move(port);
  return cached;
}

void logReplyError(Instance& instance, std::int32_t result) {
  Log(instance, "IMK CFMessagePortSendRequest - result ", result);
  if (result == kCFMessagePortReceiveTimeout) {
    Log(instance, "IMK kCFMessagePortReceiveTimeout - result ", result);
  } else if (result == kCFMessagePortSendTimeout) {
    Log(instance, "IMK kCFMessagePortSendTimeout - result ", result);
  }
}

}  // namespace

std::int32_t BIM_SendMessageToUIServer(Instance& instance, std::uint32_t cmd,
                                       FourCharCode signature) {
  const auto port = serverPort(instance);
  if (!port) return kNoPort;
  const std::int32_t sent =
      send(instance, *port, cmd, serverPayload(cmd, signature), Seconds(0), nullptr);
  Log(instance, "IMK BIM_SendMessageToUIServer");
  return sent == kCFMessagePortSuccess ? 0 : kSendFailed;
}

std::int32_t BIM_SendMessageToUIServerWithReply(Instance& instance, std::uint32_t cmd,
                                                FourCharCode signature, CFData* replyOut) {
  // Our own hold: what runs while we wait may put another port into the cache.
  const auto port = cachedServerPort(instance);
  if (!port) {
    Log(instance, "******** CFMessagePortCreateRemote kBasicAppPortName ERROR");
    // The label doesn't say what it means; it is known by it.
    Log(instance, "IMK kCFMessagePortSuccess - result ", kNoPortWithReply);
    return kNoPortWithReply;
  }
  CFData unread;
  CFData* reply = replyOut != nullptr ? replyOut : &unread;
  const std::int32_t result =
      send(instance, *port, cmd, serverPayload(cmd, signature), kLongWait, reply);
  if (result != kCFMessagePortSuccess) logReplyError(instance, result);
  return result;
}

std::int32_t BIMSendMessageToAppServerWithReply(Instance& instance, std::uint32_t id,
                                                std::uint32_t /*ignored*/) {
  const auto port = serverPort(instance);
  if (!port) return kNoPort;
  CFData unread;
  const auto payload = serverPayload(id, FRONTPROCESSSIGNATURE(instance));
  return send(instance, *port, id, payload, kShortWait, &unread) == kCFMessagePortSuccess
             ? 0
             : kSendFailed;
}

std::int32_t BIMSendAppMessage(Instance& instance, std::uint32_t value) {
  instance.platform().console.print("BIMSendAppMessage\n");
  return BIMSendMessageToAppServerWithReply(instance, kAppMessage, value);
}

std::int32_t CallDirectQorvBIMSendAppMessage(Instance& instance, std::uint32_t value) {
  BIMSendAppMessage(instance, value);
  return 1;
}

std::int32_t BIMSendMessageToMenuletServer(Instance& instance, std::uint32_t id) {
  const auto port =
      instance.platform().messagePorts.CFMessagePortCreateRemote(kBasicMenuletPortName);
  if (!port) {
    Log(instance, "******** CFMessagePortCreateRemote kBasicMenuletPortName ERROR");
    return kNoPort;
  }
  ProcessSerialNumber sender;
  const OSStatus status = instance.platform().processManager.GetCurrentProcess(sender);
  if (status != noErr) return status;
  std::array<std::uint8_t, kMenuletPayloadSize> payload{};
  static_assert(kMenuletSenderOffset + sizeof(sender) == kMenuletPayloadSize);
  std::memcpy(payload.data() + kMenuletSenderOffset, &sender, sizeof(sender));
  return send(instance, *port, id, payload, Seconds(0), nullptr) == kCFMessagePortSuccess
             ? 0
             : kSendFailed;
}

std::int32_t BIMQuitMenulet(Instance& instance) {
  Log(instance, "******* BIMQuitMenulet  QuitQuorvaneMenulet ***************");
  return BIMSendMessageToMenuletServer(instance, kQuitMenulet);
}

std::uint8_t is_AEITEM_Process_active(Instance& instance) {
  return instance.state<MessageSendState>().AEITEM_Process_active;
}

}  // namespace quorvane
