#include "hosts/desktop/RemotePort.h"

#include <poll.h>

#include <cerrno>

#include "src/base/Process.h"

namespace quorvane::desktop {
namespace {

bool pollForRoom(int socket, RunLoop::Deadline deadline) {
  using std::chrono::milliseconds;
  pollfd entry{socket, POLLOUT, 0};
  for (;;) {
    const auto left = deadline - std::chrono::steady_clock::now();
    if (left <= left.zero()) return false;
    const auto wait = std::chrono::ceil<milliseconds>(left).count();
    const int ready = poll(&entry, 1, static_cast<int>(std::min<std::int64_t>(wait, 60'000)));
    if (ready > 0 || (ready < 0 && errno != EINTR)) return ready > 0;
  }
}

}  // namespace

std::shared_ptr<RemotePort> RemotePort::connect(const std::filesystem::path& path,
                                                RunLoop& runLoop) {
  Descriptor socket = connectTo(path);
  if (!socket.valid()) return nullptr;
  return std::make_shared<RemotePort>(path, std::move(socket), runLoop);
}

RemotePort::RemotePort(std::filesystem::path path, Descriptor socket, RunLoop& runLoop)
    : path_(std::move(path)),
      socket_(std::move(socket)),
      runLoop_(runLoop),
      packet_(kMessagePayloadLimit) {
  watchPeer();
}

std::int32_t RemotePort::send(std::int32_t messageId, std::span<const std::uint8_t> data,
                              RunLoop::Deadline room) {
  return sendRequest(messageId, false, data, [&] { return pollForRoom(socket_.get(), room); });
}

std::int32_t RemotePort::ask(std::int32_t messageId, std::span<const std::uint8_t> data,
                             RunLoop::Deadline room, std::chrono::microseconds answerTime,
                             CFData& reply) {
  if (!asking_) return askOnThisConnection(messageId, data, room, answerTime, reply);
  // Answers carry no id: a question asked while another waits goes over a connection of its own.
  const auto second = connect(path_, runLoop_);
  if (second == nullptr) return kCFMessagePortIsInvalid;
  return second->ask(messageId, data, room, answerTime, reply);
}

std::int32_t RemotePort::askOnThisConnection(std::int32_t messageId,
                                             std::span<const std::uint8_t> data,
                                             RunLoop::Deadline room,
                                             std::chrono::microseconds answerTime, CFData& reply) {
  const auto keepAlive = shared_from_this();
  const FlagGuard guard(asking_);
  if (!dropUnaskedAnswers()) return invalidate();
  const std::int32_t status = sendRequest(messageId, true, data, [&] {
    return runLoop_.runUntilReady(socket_.get(), POLLOUT, room) != 0;
  });
  if (status != kCFMessagePortSuccess) return status;
  return takeAnswer(std::chrono::steady_clock::now() + answerTime, reply);
}

template <class WaitForRoom>
std::int32_t RemotePort::sendRequest(std::int32_t messageId, bool replyWanted,
                                     std::span<const std::uint8_t> data, WaitForRoom waitForRoom) {
  if (!valid_) return kCFMessagePortIsInvalid;
  const auto header = encodeRequestHeader(messageId, replyWanted);
  for (;;) {
    switch (sendPacket(socket_.get(), header, data)) {
      case Transfer::Done:
        return kCFMessagePortSuccess;
      case Transfer::Gone:
        return invalidate();
      case Transfer::Failed:
        return kCFMessagePortTransportError;
      case Transfer::NotReady:
        if (!waitForRoom()) return kCFMessagePortSendTimeout;
    }
  }
}

std::int32_t RemotePort::takeAnswer(RunLoop::Deadline deadline, CFData& reply) {
  for (;;) {
    if (runLoop_.runUntilReady(socket_.get(), POLLIN, deadline) == 0) {
      reconnect();
      return kCFMessagePortReceiveTimeout;
    }
    std::size_t size = 0;
    switch (receiveReply(socket_.get(), packet_, size)) {
      case Transfer::Done:
        reply.assign(packet_.begin(), packet_.begin() + static_cast<std::ptrdiff_t>(size));
        return kCFMessagePortSuccess;
      case Transfer::Gone:
        return invalidate();
      case Transfer::Failed:
        reconnect();
        return kCFMessagePortTransportError;
      case Transfer::NotReady:
        break;
    }
  }
}

bool RemotePort::dropUnaskedAnswers() {
  constexpr int kMost = 1000;
  if (!valid_) return false;
  std::size_t size = 0;
  for (int i = 0; i < kMost; ++i) {
    switch (receiveReply(socket_.get(), packet_, size)) {
      case Transfer::NotReady:
        return true;
      case Transfer::Gone:
        return false;
      case Transfer::Done:
      case Transfer::Failed:
        break;
    }
  }
  reconnect();
  return valid_;
}

void RemotePort::watchPeer() {
  hangUp_ = runLoop_.watch(socket_.get(), GIOCondition{}, [this](GIOCondition) { invalidate(); });
}

/// An answer that comes too late dies with its connection, so that the next one isn't taken for it.
void RemotePort::reconnect() {
  hangUp_.reset();
  socket_ = connectTo(path_);
  if (socket_.valid()) {
    watchPeer();
  } else {
    invalidate();
  }
}

std::int32_t RemotePort::invalidate() {
  valid_ = false;
  hangUp_.reset();
  return kCFMessagePortIsInvalid;
}

}  // namespace quorvane::desktop
