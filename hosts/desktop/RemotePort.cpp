#include "hosts/desktop/RemotePort.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>

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
                             const Patience& patience, CFData& reply) {
  if (question_ != nullptr) {
    const auto second = connect(path_, runLoop_);
    if (second == nullptr) return kCFMessagePortIsInvalid;
    return second->ask(messageId, data, patience, reply);
  }
  const auto keepAlive = shared_from_this();
  Question question{reply, std::nullopt};
  const std::int32_t sent =
      sendRequest(messageId, true, data, [&] { return runUntilRoom(patience.room); });
  if (sent != kCFMessagePortSuccess) return sent;
  return await(question,
               std::min(std::chrono::steady_clock::now() + patience.answer, patience.end));
}

template <class WaitForRoom>
std::int32_t RemotePort::sendRequest(std::int32_t messageId, bool replyWanted,
                                     std::span<const std::uint8_t> data, WaitForRoom waitForRoom) {
  const auto header = encodeRequestHeader(messageId, replyWanted);
  while (valid_) {
    switch (sendPacket(socket_.get(), header, data)) {
      case Transfer::Done:
        return kCFMessagePortSuccess;
      case Transfer::Gone:
        invalidate();
        break;
      case Transfer::Failed:
        return kCFMessagePortTransportError;
      case Transfer::NotReady:
        if (!waitForRoom()) return kCFMessagePortSendTimeout;
    }
  }
  return kCFMessagePortIsInvalid;
}

bool RemotePort::runUntilRoom(RunLoop::Deadline deadline) {
  bool room = false;
  const auto watch =
      runLoop_.watch(socket_.get(), G_IO_OUT, [&room](GIOCondition) { room = true; });
  return runLoop_.runUntil([&] { return room || !valid_; }, deadline);
}

std::int32_t RemotePort::await(Question& question, RunLoop::Deadline deadline) {
  const auto settled = [&question] { return question.status.has_value(); };
  question_ = &question;
  while (!settled() && runLoop_.runUntilReadable(socket_.get(), settled, deadline)) {
    if (!settled()) readAnswer();
  }
  if (settled()) return *question.status;
  question_ = nullptr;
  reconnect();
  return kCFMessagePortReceiveTimeout;
}

/// Handles one packet from the peer. What nobody asked for is dropped.
void RemotePort::readAnswer() {
  std::size_t size = 0;
  switch (receiveReply(socket_.get(), packet_, size)) {
    case Transfer::Done:
      if (question_ == nullptr) return;
      question_->reply.assign(packet_.begin(), packet_.begin() + static_cast<std::ptrdiff_t>(size));
      return settle(kCFMessagePortSuccess);
    case Transfer::Gone:
      return invalidate();
    case Transfer::Failed:
      settle(kCFMessagePortTransportError);
      return reconnect();
    case Transfer::NotReady:
      return;
  }
}

void RemotePort::settle(std::int32_t status) {
  if (Question* const question = std::exchange(question_, nullptr)) question->status = status;
}

void RemotePort::watchPeer() {
  watch_ = runLoop_.watch(socket_.get(), G_IO_IN, [this](GIOCondition) { readAnswer(); });
}

/// An answer that comes too late dies with its connection, so that the next one isn't taken for it.
void RemotePort::reconnect() {
  watch_.reset();
  socket_ = connectTo(path_);
  if (socket_.valid()) {
    watchPeer();
  } else {
    invalidate();
  }
}

void RemotePort::invalidate() {
  valid_ = false;
  watch_.reset();
  settle(kCFMessagePortIsInvalid);
}

}  // namespace quorvane::desktop
