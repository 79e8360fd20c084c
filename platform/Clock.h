#pragma once
// The one source of time. Nothing else in the tree asks for it.

#include <cstdint>

namespace quorvane {

class Clock {
 public:
  virtual ~Clock() = default;

  /// Nanoseconds since an unknown start; never goes back.
  virtual std::uint64_t mach_absolute_time() = 0;
  /// Seconds since start-up, the time base of events.
  virtual double GetCurrentEventTime() = 0;
  virtual void usleep(std::uint32_t microseconds) = 0;
};

}  // namespace quorvane
