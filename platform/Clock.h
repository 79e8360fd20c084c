#pragma once
// The one source of time. Nothing else in the tree asks for it.

#include <cstdint>

#include "platform/Units.h"

namespace quorvane {

class Clock {
 public:
  virtual ~Clock() = default;

  /// Nanoseconds since an unknown start; never goes back.
  virtual std::uint64_t mach_absolute_time() = 0;
  /// Since start-up; the time base of events.
  virtual Seconds GetCurrentEventTime() = 0;
  /// Since 1 January 2001, 0:00 in UTC, by the clock on the wall; also +[NSDate date].
  virtual Seconds CFAbsoluteTimeGetCurrent() = 0;
  virtual void usleep(Microseconds duration) = 0;
};

}  // namespace quorvane
