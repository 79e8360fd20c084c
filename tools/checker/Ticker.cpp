#include "tools/checker/Ticker.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>
#include <system_error>

namespace quorvane::checker {

namespace {

constexpr Ticker::Microseconds kLong{100'000};

}  // namespace

Ticker::Ticker(desktop::RunLoop& loop, std::function<void()> tick)
    : loop_(loop),
      timer_(::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)),
      tick_(std::move(tick)) {
  if (!timer_.valid()) throw std::system_error(errno, std::generic_category(), "no timer");
  watch_ = loop.watch(timer_.get(), G_IO_IN, [this](GIOCondition /*ready*/) { expired(); });
}

void Ticker::every(Microseconds interval) {
  if (interval == interval_) return;
  interval_ = interval;
  const bool isLong = interval >= kLong;
  arm(isLong ? Microseconds(0) : interval);
  slow_ = isLong ? loop_.addTimer(interval, interval, tick_) : nullptr;
}

/// 0: not at all.
void Ticker::arm(Microseconds interval) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(interval);
  const std::chrono::nanoseconds rest = interval - seconds;
  const timespec period{static_cast<std::time_t>(seconds.count()), static_cast<long>(rest.count())};
  const itimerspec times{period, period};
  ::timerfd_settime(timer_.get(), 0, &times, nullptr);
}

/// However many intervals have passed meanwhile, one look tells all.
void Ticker::expired() {
  std::uint64_t times = 0;
  if (::read(timer_.get(), &times, sizeof(times)) == sizeof(times)) tick_();
}

}  // namespace quorvane::checker
