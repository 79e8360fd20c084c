#pragma once
// Message ports and the run loop in memory. Foreign servers are scripted; what is posted to the own
// ports from outside waits for a turn of the run loop.

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/journal/Journal.h"
#include "hosts/memory/MemoryClock.h"
#include "platform/MessagePorts.h"

namespace quorvane::memory {

/// A port of another process.
struct MemoryServer {
  /// Gets every message; its result is the reply to a waiting one.
  std::function<std::optional<CFData>(std::int32_t id, const CFData& data)> answer;
  double delayTicks = 0;  ///< until a reply is there
  bool silent = false;    ///< takes messages, never replies: a waiting send times out
  bool full = false;      ///< has no room: every send times out
};

struct SentMessage {
  std::string port;
  std::int32_t id = 0;
  CFData data;
  bool waiting = false;
};

class MemoryMessagePorts : public MessagePorts, public RunLoop {
 public:
  MemoryMessagePorts(Journal& journal, MemoryClock& clock);
  ~MemoryMessagePorts() override;

  std::shared_ptr<CFMessagePort> CFMessagePortCreateLocal(std::string_view name,
                                                          CFMessagePortCallBack callback) override;
  std::shared_ptr<CFMessagePort> CFMessagePortCreateRemote(std::string_view name) override;
  std::shared_ptr<CFRunLoopSource> CFMessagePortCreateRunLoopSource(
      const std::shared_ptr<CFMessagePort>& port) override;
  std::int32_t CFMessagePortSendRequest(CFMessagePort& remote, std::int32_t messageId,
                                        std::span<const std::uint8_t> data, Seconds sendTimeout,
                                        Seconds receiveTimeout, CFData* reply) override;
  CFRunLoop* CFRunLoopGetCurrent() override;
  void CFRunLoopAddSource(CFRunLoop& loop, std::shared_ptr<CFRunLoopSource> source) override;
  /// At the first turn after the clock has come so far.
  void performAfterDelay(std::function<void()> function, Seconds delay) override;
  [[nodiscard]] std::unique_ptr<Registration> addTimer(Seconds first, Seconds interval,
                                                       std::function<void()> action) override;

  // The script's side.
  /// Another process serves `name` from now on; one that did has gone.
  void serve(std::string_view name, MemoryServer server);
  /// Its peer has gone: sends to it fail, and a new remote port can't be made.
  void stopServing(std::string_view name);
  /// Null where no other process serves it.
  MemoryServer* server(std::string_view name);
  /// A message from another process. False where this process doesn't serve the name on its run
  /// loop. It is handled at the next turn. Without data the callback gets null.
  bool post(std::string_view name, std::int32_t id, std::optional<CFData> data);
  /// A turn of the run loop: handles what waits, also what comes in meanwhile, at most
  /// `kTurnLimit` messages and delayed functions. Returns how many. A waiting send does the same,
  /// nested.
  std::size_t runPending();
  [[nodiscard]] std::size_t pending() const { return pending_.size() + due_.size(); }
  /// Something that was to be done later waits for a turn.
  [[nodiscard]] bool hasDue() const { return !due_.empty(); }
  /// A name that this process serves and that has `prefix`; empty where there is none.
  [[nodiscard]] std::string servedName(std::string_view prefix) const;
  /// Every send, the latest thousand.
  [[nodiscard]] const std::deque<SentMessage>& sent() const { return sent_; }
  void clearSent() { sent_.clear(); }
  /// Run with each turn inside a waiting send: what else lives on the run loop.
  std::function<void()> whileWaiting;

  static constexpr std::size_t kTurnLimit = 4096;
  bool createLocalFails = false;
  bool createRunLoopSourceFails = false;
  bool getCurrentFails = false;

 private:
  class LocalPort;
  class RemotePort;
  class Source;
  struct Timer;
  struct Loop : CFRunLoop {
    std::vector<std::shared_ptr<CFRunLoopSource>> sources;
  };
  struct Pending {
    std::string name;
    std::int32_t id = 0;
    std::optional<CFData> data;
  };
  struct Peer;
  struct Reply;
  [[nodiscard]] std::shared_ptr<LocalPort> servedOnLoop(std::string_view name) const;
  std::int32_t sendToPeer(const std::shared_ptr<Peer>& peer, const SentMessage& message,
                          Seconds sendTimeout, Seconds receiveTimeout, CFData* reply);
  std::shared_ptr<Reply> handOver(const std::shared_ptr<Peer>& peer, const SentMessage& message);
  std::int32_t await(const Peer& peer, const Reply& arrived, Seconds receiveTimeout);
  void turnWhileWaiting();
  void handleMessage();
  void arm(const std::shared_ptr<Timer>& timer, Seconds delay);
  void fire(const std::shared_ptr<Timer>& timer);
  std::int32_t sendToSelf(LocalPort& port, const SentMessage& message, Seconds receiveTimeout,
                          CFData* reply);
  void remember(const SentMessage& message);

  Journal& journal_;
  MemoryClock& clock_;
  Loop loop_;
  std::map<std::string, std::weak_ptr<LocalPort>, std::less<>> locals_;
  std::map<std::string, std::shared_ptr<Peer>, std::less<>> peers_;
  std::deque<Pending> pending_;
  std::deque<std::function<void()>> due_;  ///< their delay is over
  std::deque<SentMessage> sent_;
};

}  // namespace quorvane::memory
