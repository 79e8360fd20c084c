#pragma once

#include "platform/Clock.h"

namespace quorvane::desktop {

/// CLOCK_MONOTONIC, and CLOCK_REALTIME for the date.
class Clock final : public quorvane::Clock {
 public:
  std::uint64_t mach_absolute_time() override;
  double GetCurrentEventTime() override;
  CFAbsoluteTime CFAbsoluteTimeGetCurrent() override;
  void usleep(std::uint32_t microseconds) override;
};

}  // namespace quorvane::desktop
