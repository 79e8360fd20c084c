#include "hosts/desktop/RunLoop.h"

#include <glib-unix.h>
#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <exception>
#include <string>

namespace quorvane::desktop {
namespace {

/// What one source calls, kept by GLib for as long as a call of it lasts.
struct Handler {
  std::function<bool(GIOCondition)> call;
  quorvane::LogSink& log;
};

void logFailure(quorvane::LogSink& log, const char* what) {
  if (log.enabled) log.writeLine(std::string("run loop: a handler failed: ") + what);
}

gboolean callHandler(gpointer data, GIOCondition condition) {
  auto& handler = *static_cast<Handler*>(data);
  try {
    return handler.call(condition) ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
  } catch (const std::exception& failure) {
    logFailure(handler.log, failure.what());
  } catch (...) {
    logFailure(handler.log, "unknown");
  }
  return G_SOURCE_CONTINUE;
}

gboolean timerFired(gpointer data) { return callHandler(data, GIOCondition{}); }

gboolean descriptorReady(gint /*descriptor*/, GIOCondition condition, gpointer data) {
  return callHandler(data, condition);
}

void freeHandler(gpointer data) { std::unique_ptr<Handler>(static_cast<Handler*>(data)); }

class SourceOwner final : public Registration {
 public:
  SourceOwner(GSource* source, GSourceFunc function, Handler handler, GMainContext* context)
      : source_(source) {
    g_source_set_callback(source_, function,
                          std::make_unique<Handler>(std::move(handler)).release(), freeHandler);
    g_source_attach(source_, context);
  }
  ~SourceOwner() override {
    g_source_destroy(source_);
    g_source_unref(source_);
  }
  SourceOwner(const SourceOwner&) = delete;
  SourceOwner& operator=(const SourceOwner&) = delete;

 private:
  GSource* source_;
};

std::function<bool(GIOCondition)> alwaysAgain(std::function<void(GIOCondition)> handler) {
  return [handler = std::move(handler)](GIOCondition condition) {
    handler(condition);
    return true;
  };
}

RunLoop::Milliseconds millisecondsOf(Seconds duration) {
  constexpr Seconds kLongest = std::chrono::hours(24);
  return std::chrono::ceil<RunLoop::Milliseconds>(std::clamp(duration, Seconds(0), kLongest));
}

int millisecondsUntil(RunLoop::Deadline deadline) {
  using std::chrono::milliseconds;
  const auto left = deadline - std::chrono::steady_clock::now();
  const auto rounded = std::chrono::ceil<milliseconds>(left).count();
  return static_cast<int>(std::clamp<std::int64_t>(rounded, 0, 60'000));
}

}  // namespace

RunLoop::RunLoop(quorvane::LogSink& log, GMainContext* context)
    : log_(log), context_(g_main_context_ref(context)), polled_(16) {
  descriptorsWatch_ = watchByGLib(descriptors_->descriptor(), G_IO_IN, [this](GIOCondition) {
    handleDescriptor(&DescriptorSet::handleOne);
  });
}

RunLoop::~RunLoop() {
  removeAllSources();
  descriptorsWatch_.reset();
  g_main_context_unref(context_);
}

void RunLoop::CFRunLoopAddSource(CFRunLoop& /*loop*/, std::shared_ptr<CFRunLoopSource> source) {
  const auto ours = std::dynamic_pointer_cast<RunLoopSource>(source);
  if (ours == nullptr) return;
  ours->schedule(*this);
  if (std::ranges::find(sources_, source) == sources_.end()) sources_.push_back(std::move(source));
}

void RunLoop::performAfterDelay(std::function<void()> function, Seconds delay) {
  const auto place = delayed_.emplace(delayed_.end());
  const auto perform = [this, place, function = std::move(function)] {
    delayed_.erase(place);  // first, lest a function that throws run again
    function();
    return false;
  };
  *place = addTimer(millisecondsOf(delay), perform);
}

void RunLoop::removeAllSources() {
  sources_.clear();
  delayed_.clear();
}

std::unique_ptr<Registration> RunLoop::addTimer(Seconds first, Seconds interval,
                                                std::function<void()> action) {
  const Milliseconds period = millisecondsOf(interval);
  GSource* source = g_timeout_source_new(static_cast<guint>(period.count()));
  g_source_set_ready_time(source, firstDue(millisecondsOf(first), period));
  auto call = [repeats = interval > Seconds(0), action = std::move(action)](GIOCondition) {
    action();
    return repeats;
  };
  return std::make_unique<SourceOwner>(source, timerFired, Handler{std::move(call), log_},
                                       context_);
}

gint64 RunLoop::firstDue(Milliseconds first, Milliseconds interval) {
  constexpr gint64 kAlmost = 5'000;
  const gint64 due = g_get_monotonic_time() + first.count() * 1000;
  if (interval == Milliseconds(0)) return due;
  gint64& latest = latestDue_[interval];
  if (std::abs(due - latest) > kAlmost) latest = due;
  return latest;
}

std::unique_ptr<Registration> RunLoop::addTimer(Milliseconds interval, std::function<bool()> tick) {
  GSource* source = g_timeout_source_new(static_cast<guint>(interval.count()));
  g_source_set_priority(source, G_PRIORITY_DEFAULT);
  auto call = [tick = std::move(tick)](GIOCondition) { return tick(); };
  return std::make_unique<SourceOwner>(source, timerFired, Handler{std::move(call), log_},
                                       context_);
}

std::unique_ptr<Registration> RunLoop::watch(int descriptor, GIOCondition condition,
                                             std::function<void(GIOCondition)> handler) {
  auto watch = descriptors_->add(descriptor, condition, handler);
  return watch != nullptr ? std::move(watch)
                          : watchByGLib(descriptor, condition, std::move(handler));
}

std::unique_ptr<Registration> RunLoop::watchByGLib(int descriptor, GIOCondition condition,
                                                   std::function<void(GIOCondition)> handler) {
  GSource* source = g_unix_fd_source_new(descriptor, condition);
  g_source_set_can_recurse(source, TRUE);
  auto function = reinterpret_cast<void (*)()>(descriptorReady);
  return std::make_unique<SourceOwner>(source, reinterpret_cast<GSourceFunc>(function),
                                       Handler{alwaysAgain(std::move(handler)), log_}, context_);
}

std::unique_ptr<Registration> RunLoop::onSignal(int number, std::function<void()> handler) {
  auto call = [handler = std::move(handler)](GIOCondition) { handler(); };
  return std::make_unique<SourceOwner>(g_unix_signal_source_new(number), timerFired,
                                       Handler{alwaysAgain(std::move(call)), log_}, context_);
}

void RunLoop::run() {
  bool over = false;
  running_.push_back(&over);
  while (!over) {
    handled_ = false;
    g_main_context_iteration(context_, TRUE);
    while (!over && handled_) handleDescriptor(&DescriptorSet::handleOneSoon);
  }
  running_.pop_back();
}

void RunLoop::quit() {
  if (!running_.empty()) *running_.back() = true;
}

void RunLoop::handleDescriptor(bool (DescriptorSet::*handleOne)()) {
  handled_ = true;
  try {
    handled_ = (*descriptors_.*handleOne)();
  } catch (const std::exception& failure) {
    logFailure(log_, failure.what());
  } catch (...) {
    logFailure(log_, "unknown");
  }
}

void RunLoop::runFor(Milliseconds duration) {
  bool over = false;
  const auto timer = addTimer(duration, [&over] {
    over = true;
    return false;
  });
  while (!over) g_main_context_iteration(context_, TRUE);
}

void RunLoop::runPending() {
  for (int turn = 0; turn < kMostTurns; ++turn) {
    if (!g_main_context_iteration(context_, FALSE)) return;
  }
}

RunLoop::Turn RunLoop::turn(Deadline deadline, int descriptor) {
  // GLib's own cycle, step by step, since its iteration knows no deadline.
  int priority = 0;
  g_main_context_prepare(context_, &priority);
  int timeout = -1;
  const std::span<GPollFD> sources = queryDescriptors(priority, timeout);
  const int left = millisecondsUntil(deadline);
  const int wait = timeout < 0 ? left : std::min(timeout, left);
  // Looked at first: what its peer had sent elsewhere before is then seen in the same poll.
  polled_.front() = {descriptor, G_IO_IN, 0};
  poll(reinterpret_cast<pollfd*>(polled_.data()), sources.size() + 1, wait);
  const bool readable = polled_.front().revents != 0;
  bool ready = timeout == 0;
  for (const GPollFD& source : sources) ready = ready || source.revents != 0;
  if (readable && !ready) return {false, true, left <= 0};
  const bool handled = g_main_context_check(context_, priority, sources.data(),
                                            static_cast<int>(sources.size())) != 0;
  if (handled) g_main_context_dispatch(context_);
  return {handled, readable, left <= 0};
}

std::span<GPollFD> RunLoop::queryDescriptors(int priority, int& timeout) {
  const auto query = [&] {
    return static_cast<std::size_t>(g_main_context_query(
        context_, priority, &timeout, polled_.data() + 1, static_cast<int>(polled_.size() - 1)));
  };
  std::size_t count = query();
  while (count >= polled_.size()) {
    polled_.resize(count + 1);
    count = query();
  }
  return std::span(polled_).subspan(1, count);
}

}  // namespace quorvane::desktop
