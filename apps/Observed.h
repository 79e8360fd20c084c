#pragma once
// Platform interfaces that tell what passes through them.

#include <functional>
#include <map>

#include "platform/MessagePorts.h"
#include "platform/SharedMemory.h"

namespace quorvane {

class ObservedMessagePorts final : public MessagePorts {
 public:
  explicit ObservedMessagePorts(MessagePorts& inner) : inner_(inner) {}

  /// Before the callback sees it. The data may be null.
  std::function<void(std::int32_t messageId, const CFData* data)> received;
  std::function<void(std::int32_t messageId, std::size_t size, std::int32_t result)> sent;

  std::shared_ptr<CFMessagePort> CFMessagePortCreateLocal(std::string_view name,
                                                          CFMessagePortCallBack callback) override;
  std::shared_ptr<CFMessagePort> CFMessagePortCreateRemote(std::string_view name) override;
  std::shared_ptr<CFRunLoopSource> CFMessagePortCreateRunLoopSource(
      const std::shared_ptr<CFMessagePort>& port) override;
  std::int32_t CFMessagePortSendRequest(CFMessagePort& remote, std::int32_t messageId,
                                        std::span<const std::uint8_t> data, Seconds sendTimeout,
                                        Seconds receiveTimeout, CFData* reply) override;

 private:
  MessagePorts& inner_;
};

class ObservedSharedMemory final : public SharedMemory {
 public:
  explicit ObservedSharedMemory(SharedMemory& inner) : inner_(inner) {}

  std::function<void(std::uint32_t key)> attached;

  int shmget(std::uint32_t key, std::size_t size, int flags) override;
  void* shmat(int id, const void* address, int flags) override;
  int shmdt(const void* address) override { return inner_.shmdt(address); }
  int shmctl(int id, int command) override { return inner_.shmctl(id, command); }
  int lastError() override { return inner_.lastError(); }
  std::size_t attachedSize(const void* address) override { return inner_.attachedSize(address); }

 private:
  SharedMemory& inner_;
  std::map<int, std::uint32_t> keys_;  ///< by segment id
};

}  // namespace quorvane
