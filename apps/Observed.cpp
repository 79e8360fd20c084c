#include "apps/Observed.h"

#include <utility>

namespace quorvane {

std::shared_ptr<CFMessagePort> ObservedMessagePorts::CFMessagePortCreateLocal(
    std::string_view name, CFMessagePortCallBack callback) {
  return inner_.CFMessagePortCreateLocal(
      name, [this, callback = std::move(callback)](std::int32_t messageId, const CFData* data) {
        if (received) received(messageId, data);
        return callback(messageId, data);
      });
}

std::shared_ptr<CFMessagePort> ObservedMessagePorts::CFMessagePortCreateRemote(
    std::string_view name) {
  return inner_.CFMessagePortCreateRemote(name);
}

std::shared_ptr<CFRunLoopSource> ObservedMessagePorts::CFMessagePortCreateRunLoopSource(
    const std::shared_ptr<CFMessagePort>& port) {
  return inner_.CFMessagePortCreateRunLoopSource(port);
}

std::int32_t ObservedMessagePorts::CFMessagePortSendRequest(CFMessagePort& remote,
                                                            std::int32_t messageId,
                                                            std::span<const std::uint8_t> data,
                                                            Seconds sendTimeout,
                                                            Seconds receiveTimeout, CFData* reply) {
  const std::int32_t result =
      inner_.CFMessagePortSendRequest(remote, messageId, data, sendTimeout, receiveTimeout, reply);
  if (sent) sent(messageId, data.size(), result);
  return result;
}

int ObservedSharedMemory::shmget(std::uint32_t key, std::size_t size, int flags) {
  const int id = inner_.shmget(key, size, flags);
  if (id >= 0) keys_[id] = key;
  return id;
}

void* ObservedSharedMemory::shmat(int id, const void* address, int flags) {
  void* const result = inner_.shmat(id, address, flags);
  if (result != kShmFailed && attached) attached(keys_[id]);
  return result;
}

}  // namespace quorvane
