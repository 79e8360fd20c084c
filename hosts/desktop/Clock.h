#pragma once

#include "platform/Clock.h"

namespace quorvane::desktop {

/// CLOCK_MONOTONIC.
class Clock final : public quorvane::Clock {
 public:
  std::uint64_t mach_absolute_time() override;
  double GetCurrentEventTime() override;
  void usleep(std::uint32_t microseconds) override;
};

}  // namespace quorvane::desktop
