#pragma once

#include "platform/Clock.h"

namespace quorvane::desktop {

/// CLOCK_MONOTONIC.
class Clock final : public quorvane::Clock {
 public:
  std::uint64_t mach_absolute_time() override;
  Seconds GetCurrentEventTime() override;
  void usleep(Microseconds duration) override;
};

}  // namespace quorvane::desktop
