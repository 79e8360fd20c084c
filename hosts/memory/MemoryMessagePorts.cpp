#include "hosts/memory/MemoryMessagePorts.h"

#include <algorithm>
#include <utility>

namespace quorvane::memory {
namespace {

constexpr std::size_t kSentKept = 1000;

std::uint64_t toNanoseconds(Seconds time) { return static_cast<std::uint64_t>(time.count() * 1e9); }

}  // namespace

class MemoryMessagePorts::LocalPort : public CFMessagePort {
 public:
  LocalPort(std::string_view portName, CFMessagePortCallBack portCallback)
      : name(portName), callback(std::move(portCallback)) {}

  const std::string name;
  const CFMessagePortCallBack callback;
  std::shared_ptr<RemotePort> remote;  ///< our own end of it, once asked for
  bool onLoop = false;
};

/// A server in another process. It owns our end of the connection, which so stays the same object.
struct MemoryMessagePorts::Peer {
  MemoryServer server;
  std::shared_ptr<RemotePort> remote;
  bool gone = false;
};

class MemoryMessagePorts::RemotePort : public CFMessagePort {
 public:
  RemotePort(std::string_view portName, std::weak_ptr<Peer> peerAt, std::weak_ptr<LocalPort> self)
      : name(portName), peer(std::move(peerAt)), local(std::move(self)) {}

  const std::string name;
  const std::weak_ptr<Peer> peer;        ///< in another process
  const std::weak_ptr<LocalPort> local;  ///< or in this one
};

class MemoryMessagePorts::Source : public CFRunLoopSource {
 public:
  explicit Source(std::shared_ptr<LocalPort> served) : port(std::move(served)) {}

  const std::shared_ptr<LocalPort> port;
};

struct MemoryMessagePorts::Reply {
  bool arrived = false;
  CFData data;
};

MemoryMessagePorts::MemoryMessagePorts(Journal& journal, MemoryClock& clock)
    : journal_(journal), clock_(clock) {}

MemoryMessagePorts::~MemoryMessagePorts() = default;

std::shared_ptr<CFMessagePort> MemoryMessagePorts::CFMessagePortCreateLocal(
    std::string_view name, CFMessagePortCallBack callback) {
  const std::size_t line = journal_.call("CFMessagePortCreateLocal ", name);
  if (createLocalFails || peers_.contains(name)) {
    journal_.result(line, std::string_view("null"));
    return nullptr;
  }
  std::weak_ptr<LocalPort>& known = locals_[std::string(name)];
  if (auto port = known.lock()) return port;
  auto port = std::make_shared<LocalPort>(name, std::move(callback));
  known = port;
  return port;
}

std::shared_ptr<CFMessagePort> MemoryMessagePorts::CFMessagePortCreateRemote(
    std::string_view name) {
  const std::size_t line = journal_.call("CFMessagePortCreateRemote ", name);
  if (const auto peer = peers_.find(name); peer != peers_.end()) return peer->second->remote;
  const auto local = locals_.find(name);
  if (const auto port = local == locals_.end() ? nullptr : local->second.lock()) {
    if (!port->remote) {
      port->remote = std::make_shared<RemotePort>(name, std::weak_ptr<Peer>{}, port);
    }
    return port->remote;
  }
  journal_.result(line, std::string_view("null"));
  return nullptr;
}

std::shared_ptr<CFRunLoopSource> MemoryMessagePorts::CFMessagePortCreateRunLoopSource(
    const std::shared_ptr<CFMessagePort>& port) {
  const std::size_t line = journal_.call("CFMessagePortCreateRunLoopSource");
  auto local = std::dynamic_pointer_cast<LocalPort>(port);
  if (createRunLoopSourceFails || !local) {
    journal_.result(line, std::string_view("null"));
    return nullptr;
  }
  return std::make_shared<Source>(std::move(local));
}

std::int32_t MemoryMessagePorts::CFMessagePortSendRequest(CFMessagePort& remote,
                                                          std::int32_t messageId,
                                                          std::span<const std::uint8_t> data,
                                                          Seconds sendTimeout,
                                                          Seconds receiveTimeout, CFData* reply) {
  auto* const port = dynamic_cast<RemotePort*>(&remote);
  const std::string_view name = port ? std::string_view(port->name) : "a local port";
  const std::size_t line = journal_.call("CFMessagePortSendRequest ", name, " ",
                                         Journal::Code{static_cast<FourCharCode>(messageId)}, " ",
                                         data.size(), reply ? " bytes, waiting" : " bytes");
  if (!port) return journal_.result(line, kCFMessagePortIsInvalid);
  const SentMessage message{port->name, messageId, {data.begin(), data.end()}, reply != nullptr};
  remember(message);
  if (data.size() > kMessagePayloadLimit) {
    return journal_.result(line, kCFMessagePortTransportError);
  }
  if (const auto peer = port->peer.lock()) {
    return journal_.result(line, sendToPeer(peer, message, sendTimeout, receiveTimeout, reply));
  }
  if (const auto local = port->local.lock()) {
    return journal_.result(line, sendToSelf(*local, message, receiveTimeout, reply));
  }
  return journal_.result(line, kCFMessagePortIsInvalid);
}

CFRunLoop* MemoryMessagePorts::CFRunLoopGetCurrent() {
  journal_.call("CFRunLoopGetCurrent");
  return getCurrentFails ? nullptr : &loop_;
}

void MemoryMessagePorts::CFRunLoopAddSource(CFRunLoop& loop,
                                            std::shared_ptr<CFRunLoopSource> source) {
  journal_.call("CFRunLoopAddSource");
  const auto added = std::dynamic_pointer_cast<Source>(source);
  if (&loop != &loop_ || !added) return;
  added->port->onLoop = true;
  loop_.sources.push_back(std::move(source));
}

void MemoryMessagePorts::performAfterDelay(std::function<void()> function, Seconds delay) {
  journal_.call("performAfterDelay ", delay.count());
  clock_.schedule(
      toNanoseconds(std::max(delay, Seconds(0))),
      [this, function = std::move(function)]() mutable { due_.push_back(std::move(function)); });
}

struct MemoryMessagePorts::Timer {
  Seconds interval{};
  std::function<void()> action;  ///< empty: cancelled
};

std::unique_ptr<Registration> MemoryMessagePorts::addTimer(Seconds first, Seconds interval,
                                                           std::function<void()> action) {
  struct Owner : Registration {
    explicit Owner(std::shared_ptr<Timer> owned) : timer(std::move(owned)) {}
    ~Owner() override { timer->action = nullptr; }
    std::shared_ptr<Timer> timer;
  };
  journal_.call("addTimer ", first.count(), " ", interval.count());
  auto timer = std::make_shared<Timer>(Timer{interval, std::move(action)});
  arm(timer, first);
  return std::make_unique<Owner>(std::move(timer));
}

void MemoryMessagePorts::arm(const std::shared_ptr<Timer>& timer, Seconds delay) {
  clock_.schedule(toNanoseconds(std::max(delay, Seconds(0))),
                  [this, timer] { due_.emplace_back([this, timer] { fire(timer); }); });
}

void MemoryMessagePorts::fire(const std::shared_ptr<Timer>& timer) {
  if (!timer->action) return;
  if (timer->interval > Seconds(0)) arm(timer, timer->interval);
  const auto action = timer->action;  // it may cancel its own timer
  action();
}

void MemoryMessagePorts::serve(std::string_view name, MemoryServer server) {
  stopServing(name);
  const auto peer = std::make_shared<Peer>();
  peer->server = std::move(server);
  peer->remote = std::make_shared<RemotePort>(name, peer, std::weak_ptr<LocalPort>{});
  peers_[std::string(name)] = peer;
}

void MemoryMessagePorts::stopServing(std::string_view name) {
  const auto found = peers_.find(name);
  if (found == peers_.end()) return;
  found->second->gone = true;
  peers_.erase(found);
}

MemoryServer* MemoryMessagePorts::server(std::string_view name) {
  const auto found = peers_.find(name);
  return found == peers_.end() ? nullptr : &found->second->server;
}

bool MemoryMessagePorts::post(std::string_view name, std::int32_t id, std::optional<CFData> data) {
  if (!servedOnLoop(name) || (data && data->size() > kMessagePayloadLimit)) return false;
  pending_.push_back({std::string(name), id, std::move(data)});
  return true;
}

std::size_t MemoryMessagePorts::runPending() {
  std::size_t handled = 0;
  for (; pending() != 0 && handled < kTurnLimit; ++handled) {
    if (due_.empty()) {
      handleMessage();
    } else {
      const auto function = std::move(due_.front());
      due_.pop_front();
      function();
    }
  }
  return handled;
}

void MemoryMessagePorts::handleMessage() {
  const Pending message = std::move(pending_.front());
  pending_.pop_front();
  const std::shared_ptr<LocalPort> port = servedOnLoop(message.name);
  if (port) port->callback(message.id, message.data ? &*message.data : nullptr);
}

std::string MemoryMessagePorts::servedName(std::string_view prefix) const {
  for (const auto& [name, port] : locals_) {
    if (name.starts_with(prefix) && servedOnLoop(name)) return name;
  }
  return {};
}

std::shared_ptr<MemoryMessagePorts::LocalPort> MemoryMessagePorts::servedOnLoop(
    std::string_view name) const {
  const auto found = locals_.find(name);
  auto port = found == locals_.end() ? nullptr : found->second.lock();
  return port && port->onLoop ? port : nullptr;
}

std::int32_t MemoryMessagePorts::sendToPeer(const std::shared_ptr<Peer>& peer,
                                            const SentMessage& message, Seconds sendTimeout,
                                            Seconds receiveTimeout, CFData* reply) {
  if (peer->gone) return kCFMessagePortIsInvalid;
  if (peer->server.full) {
    clock_.advance(toNanoseconds(sendTimeout));
    return kCFMessagePortSendTimeout;
  }
  if (!reply) {
    handOver(peer, message);
    return kCFMessagePortSuccess;
  }
  turnWhileWaiting();
  const std::shared_ptr<Reply> arrived = handOver(peer, message);
  const std::int32_t result = await(*peer, *arrived, receiveTimeout);
  if (result == kCFMessagePortSuccess) *reply = arrived->data;
  return result;
}

/// The server gets the message once its delay has passed, also where nobody waits any more.
std::shared_ptr<MemoryMessagePorts::Reply> MemoryMessagePorts::handOver(
    const std::shared_ptr<Peer>& peer, const SentMessage& message) {
  auto reply = std::make_shared<Reply>();
  const auto receive = [peer, message, reply] {
    if (peer->gone) return;
    const auto answer = peer->server.answer;
    std::optional<CFData> data;
    if (answer) data = answer(message.id, message.data);
    if (peer->server.silent) return;
    reply->data = std::move(data).value_or(CFData{});
    reply->arrived = true;
  };
  const double delay = peer->server.delayTicks * static_cast<double>(kNanosecondsPerTick);
  if (delay > 0) {
    clock_.schedule(static_cast<std::uint64_t>(delay), receive);
  } else {
    receive();
  }
  return reply;
}

/// The nested run of the loop. It goes on in ticks, and in larger steps after a long while.
std::int32_t MemoryMessagePorts::await(const Peer& peer, const Reply& arrived,
                                       Seconds receiveTimeout) {
  const std::uint64_t start = clock_.now();
  const std::uint64_t deadline = start + toNanoseconds(receiveTimeout);
  for (;;) {
    turnWhileWaiting();
    if (arrived.arrived) return kCFMessagePortSuccess;
    if (peer.gone) return kCFMessagePortIsInvalid;
    const std::uint64_t now = clock_.now();
    if (now >= deadline) return kCFMessagePortReceiveTimeout;
    const std::uint64_t step = std::max(kNanosecondsPerTick, (now - start) / 64);
    clock_.advance(std::min(step, deadline - now));
  }
}

void MemoryMessagePorts::turnWhileWaiting() {
  if (whileWaiting) whileWaiting();
  runPending();
}

std::int32_t MemoryMessagePorts::sendToSelf(LocalPort& port, const SentMessage& message,
                                            Seconds receiveTimeout, CFData* reply) {
  if (!port.onLoop) {
    if (reply) clock_.advance(toNanoseconds(receiveTimeout));
    return reply ? kCFMessagePortReceiveTimeout : kCFMessagePortSuccess;
  }
  // No bytes and no data are the same on the way.
  const bool hasData = !message.data.empty();
  if (!reply) {
    pending_.push_back(
        {message.port, message.id, hasData ? std::optional(message.data) : std::nullopt});
    return kCFMessagePortSuccess;
  }
  turnWhileWaiting();
  *reply = port.callback(message.id, hasData ? &message.data : nullptr).value_or(CFData{});
  return kCFMessagePortSuccess;
}

void MemoryMessagePorts::remember(const SentMessage& message) {
  if (sent_.size() == kSentKept) sent_.pop_front();
  sent_.push_back(message);
}

}  // namespace quorvane::memory
