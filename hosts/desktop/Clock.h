#pragma once

#include "platform/Clock.h"

namespace quorvane::desktop {

/// CLOCK_MONOTONIC, and CLOCK_REALTIME for the date.
class Clock final : public quorvane::Clock {
 public:
  std::uint64_t mach_absolute_time() override;
  Seconds GetCurrentEventTime() override;
  Seconds CFAbsoluteTimeGetCurrent() override;
  void usleep(Microseconds duration) override;
};

}  // namespace quorvane::desktop
