#include "hosts/desktop/MessagePorts.h"

#include <algorithm>
#include <cerrno>

#include "hosts/desktop/LocalPort.h"

namespace quorvane::desktop {
namespace {

class PortSource final : public RunLoopSource {
 public:
  explicit PortSource(std::shared_ptr<LocalPort> port) : port_(std::move(port)) {}
  void schedule(RunLoop& /*runLoop*/) override { port_->startReceiving(); }

 private:
  std::shared_ptr<LocalPort> port_;
};

/// Anything that is no time at all counts as none; a day is as good as for ever.
std::chrono::microseconds durationOf(Seconds time) {
  constexpr Seconds kDay = std::chrono::hours(24);
  if (!(time > Seconds(0))) return {};
  return std::chrono::duration_cast<std::chrono::microseconds>(std::min(time, kDay));
}

}  // namespace

MessagePorts::MessagePorts(const RuntimeFolder& folder, RunLoop& runLoop, quorvane::LogSink& log)
    : folder_(folder), runLoop_(runLoop), log_(log) {}

MessagePorts::~MessagePorts() { closeLocalPorts(); }

std::shared_ptr<CFMessagePort> MessagePorts::CFMessagePortCreateLocal(
    std::string_view name, CFMessagePortCallBack callback) {
  const auto known = served_.find(name);
  if (known != served_.end()) {
    if (auto port = known->second.lock()) return port;
  }
  auto port = LocalPort::serve(folder_, name, std::move(callback), runLoop_, log_);
  if (port != nullptr) served_.insert_or_assign(std::string(name), port);
  return port;
}

std::shared_ptr<CFMessagePort> MessagePorts::CFMessagePortCreateRemote(std::string_view name) {
  // Those whose peer has gone would keep their sockets for ever: names of ports don't come again.
  std::erase_if(remotes_, [](const auto& remote) { return !remote.second->isValid(); });
  const auto known = remotes_.find(name);
  if (known != remotes_.end()) return known->second;
  if (name.empty() || name.front() == '.' || name.find('/') != std::string_view::npos) return {};
  auto port = RemotePort::connect(folder_ / name, runLoop_);
  if (port != nullptr) {
    remotes_.emplace(name, port);
  } else if (errno == EPERM && log_.enabled) {
    log_.writeLine("message port " + std::string(name) + ": another user serves it; refused");
  }
  return port;
}

std::shared_ptr<CFRunLoopSource> MessagePorts::CFMessagePortCreateRunLoopSource(
    const std::shared_ptr<CFMessagePort>& port) {
  auto local = std::dynamic_pointer_cast<LocalPort>(port);
  if (local == nullptr) return nullptr;
  return std::make_shared<PortSource>(std::move(local));
}

std::int32_t MessagePorts::CFMessagePortSendRequest(CFMessagePort& remote, std::int32_t messageId,
                                                    std::span<const std::uint8_t> data,
                                                    Seconds sendTimeout, Seconds receiveTimeout,
                                                    CFData* reply) {
  auto* port = dynamic_cast<RemotePort*>(&remote);
  if (port == nullptr) return kCFMessagePortIsInvalid;
  if (data.size() > kMessagePayloadLimit) return kCFMessagePortTransportError;
  const RemotePort::Patience how = patience(sendTimeout, receiveTimeout);
  if (reply == nullptr) return port->send(messageId, data, how.room);
  return port->ask(messageId, data, how, *reply);
}

RemotePort::Patience MessagePorts::patience(Seconds sendTimeout, Seconds receiveTimeout) const {
  const RunLoop::Deadline now = std::chrono::steady_clock::now();
  const RunLoop::Deadline end = withinKey.deadline();
  return {std::min(now + durationOf(sendTimeout), end), durationOf(receiveTimeout), end};
}

void MessagePorts::closeLocalPorts() {
  for (const auto& [name, port] : served_) {
    if (const auto served = port.lock()) served->close();
  }
}

}  // namespace quorvane::desktop
