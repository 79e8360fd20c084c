#pragma once
// The run loop: a GLib main context. Handlers run on it one at a time; what one of them throws is
// logged and goes no further.

#include <glib.h>

#include <chrono>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <span>
#include <vector>

#include "hosts/desktop/DescriptorSet.h"
#include "platform/LogSink.h"
#include "platform/RunLoop.h"

namespace quorvane::desktop {

class RunLoop;

/// A source that this host made.
class RunLoopSource : public CFRunLoopSource {
 public:
  virtual void schedule(RunLoop& runLoop) = 0;
};

class RunLoop final : public quorvane::RunLoop {
 public:
  using Milliseconds = std::chrono::milliseconds;
  using Deadline = std::chrono::steady_clock::time_point;

  RunLoop(quorvane::LogSink& log, GMainContext* context);
  ~RunLoop() override;
  RunLoop(const RunLoop&) = delete;
  RunLoop& operator=(const RunLoop&) = delete;

  CFRunLoop* CFRunLoopGetCurrent() override { return &current_; }
  void CFRunLoopAddSource(CFRunLoop& loop, std::shared_ptr<CFRunLoopSource> source) override;
  void performAfterDelay(std::function<void()> function, Seconds delay) override;

  /// Those of one interval that begin at almost the same time fall due together: they wake an idle
  /// process once.
  [[nodiscard]] std::unique_ptr<Registration> addTimer(Seconds first, Seconds interval,
                                                       std::function<void()> action) override;
  /// Calls `tick` every `interval` until it returns false or the result is destroyed.
  [[nodiscard]] std::unique_ptr<Registration> addTimer(Milliseconds interval,
                                                       std::function<bool()> tick);
  /// Calls `handler` when the descriptor is ready, also inside a nested run started by the handler
  /// itself, until the result is destroyed. `condition` 0 waits for the other end to hang up.
  [[nodiscard]] std::unique_ptr<Registration> watch(int descriptor, GIOCondition condition,
                                                    std::function<void(GIOCondition)> handler);
  /// SIGINT, SIGTERM or SIGHUP, delivered on the loop.
  [[nodiscard]] std::unique_ptr<Registration> onSignal(int number, std::function<void()> handler);

  /// Until `quit`. May be nested: `quit` ends the innermost.
  void run();
  void quit();
  void runFor(Milliseconds duration);
  /// Handles what is ready, without waiting, until nothing is; a source that is always ready can't
  /// hold it for ever.
  void runPending();
  /// Runs the loop until `isOver` says so, asked after each turn, or the time is up: false then.
  template <class Condition>
  bool runUntil(Condition isOver, Deadline deadline) {
    const Ownership ownership(context_);
    while (!isOver()) {
      if (turn(deadline).late) return isOver();
    }
    return true;
  }
  /// The same until `descriptor` can be read, too, and what was there before has been handled: what
  /// a peer sends elsewhere and then here is met in this order. A watch of `descriptor` rests.
  template <class Condition>
  bool runUntilReadable(int descriptor, Condition isOver, Deadline deadline) {
    if (!isOver() && descriptors_->isAloneReadySoon(descriptor)) return true;
    const Ownership ownership(context_);
    const auto rest = descriptors_->rest(descriptor);
    for (int behind = 0; !isOver();) {
      const Turn turn = this->turn(deadline, descriptor);
      if (turn.readable && (!turn.handled || turn.late || ++behind == kMostTurns)) return true;
      if (turn.late) return isOver();
    }
    return true;
  }
  /// Drops every source that CFRunLoopAddSource was given, and so the ports that only they keep,
  /// and what was to be performed later.
  void removeAllSources();

 private:
  struct Current : CFRunLoop {};

  /// A step of GLib's cycle may be taken only by the thread that owns the context.
  class Ownership {
   public:
    explicit Ownership(GMainContext* context) : context_(context) {
      g_main_context_acquire(context);
    }
    ~Ownership() { g_main_context_release(context_); }
    Ownership(const Ownership&) = delete;
    Ownership& operator=(const Ownership&) = delete;

   private:
    GMainContext* context_;
  };

  struct Turn {
    bool handled;
    bool readable;  ///< the descriptor that was asked for
    bool late;      ///< the deadline had come
  };

  static constexpr int kNoDescriptor = -1;  // poll passes over it
  /// A source that is always ready holds nobody longer.
  static constexpr int kMostTurns = 10'000;

  /// GLib's cycle costs more than a message: what comes soon after another is met without it, while
  /// timers, signals and other threads wait.
  void handleDescriptor(bool (DescriptorSet::*handleOne)());
  /// Waits for something to handle, and handles it.
  Turn turn(Deadline deadline, int descriptor = kNoDescriptor);
  std::span<GPollFD> queryDescriptors(int priority, int& timeout);
  std::unique_ptr<Registration> watchByGLib(int descriptor, GIOCondition condition,
                                            std::function<void(GIOCondition)> handler);

  /// In GLib's monotonic microseconds.
  gint64 firstDue(Milliseconds first, Milliseconds interval);

  quorvane::LogSink& log_;
  GMainContext* context_;
  Current current_;
  std::shared_ptr<DescriptorSet> descriptors_ = std::make_shared<DescriptorSet>();
  std::unique_ptr<Registration> descriptorsWatch_;
  std::map<Milliseconds, gint64> latestDue_;  ///< of the repeating timers, by interval
  std::vector<bool*> running_;                ///< innermost last: is it over?
  bool handled_ = false;                      ///< a descriptor, just now
  std::vector<GPollFD> polled_;               ///< first the one that is asked for, then GLib's own
  std::vector<std::shared_ptr<CFRunLoopSource>> sources_;
  std::list<std::unique_ptr<Registration>> delayed_;
};

}  // namespace quorvane::desktop
