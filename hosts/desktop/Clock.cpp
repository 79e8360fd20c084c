#include "hosts/desktop/Clock.h"

#include <cerrno>
#include <ctime>

namespace quorvane::desktop {
namespace {

constexpr std::uint64_t kNanosecondsPerSecond = 1'000'000'000;

constexpr time_t kReferenceDate = 978'307'200;  // 2001, since 1970

timespec now(clockid_t clock = CLOCK_MONOTONIC) {
  timespec time{};
  clock_gettime(clock, &time);
  return time;
}

}  // namespace

std::uint64_t Clock::mach_absolute_time() {
  const timespec time = now();
  return static_cast<std::uint64_t>(time.tv_sec) * kNanosecondsPerSecond +
         static_cast<std::uint64_t>(time.tv_nsec);
}

Seconds Clock::GetCurrentEventTime() { return std::chrono::nanoseconds(mach_absolute_time()); }

Seconds Clock::CFAbsoluteTimeGetCurrent() {
  const timespec time = now(CLOCK_REALTIME);
  return std::chrono::seconds(time.tv_sec - kReferenceDate) +
         std::chrono::nanoseconds(time.tv_nsec);
}

void Clock::usleep(Microseconds duration) {
  const std::uint64_t until = mach_absolute_time() + std::uint64_t{duration.count()} * 1000;
  const timespec wake{static_cast<time_t>(until / kNanosecondsPerSecond),
                      static_cast<long>(until % kNanosecondsPerSecond)};
  while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &wake, nullptr) == EINTR) continue;
}

}  // namespace quorvane::desktop
