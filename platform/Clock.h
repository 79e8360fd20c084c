#pragma once
// The one source of time. Nothing else in the tree asks for it.

#include <cstdint>

namespace quorvane {

/// Seconds since 1 January 2001, 0:00 in UTC.
using CFAbsoluteTime = double;

class Clock {
 public:
  virtual ~Clock() = default;

  /// Nanoseconds since an unknown start; never goes back.
  virtual std::uint64_t mach_absolute_time() = 0;
  /// Seconds since start-up, the time base of events.
  virtual double GetCurrentEventTime() = 0;
  /// What the clock on the wall shows; also +[NSDate date].
  virtual CFAbsoluteTime CFAbsoluteTimeGetCurrent() = 0;
  virtual void usleep(std::uint32_t microseconds) = 0;
};

}  // namespace quorvane
