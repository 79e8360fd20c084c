#pragma once
// Calls at intervals that may be shorter than the run loop's own timers can be. Those take over
// where the interval is long: they wake an idle process once each time, a descriptor twice.

#include <chrono>
#include <functional>
#include <memory>

#include "hosts/desktop/Descriptor.h"
#include "hosts/desktop/RunLoop.h"

namespace quorvane::checker {

class Ticker {
 public:
  using Microseconds = std::chrono::microseconds;

  /// Nothing is called before `every`. Throws std::system_error where there is no such timer.
  Ticker(desktop::RunLoop& loop, std::function<void()> tick);

  /// From now on.
  void every(Microseconds interval);

 private:
  void expired();
  void arm(Microseconds interval);

  desktop::RunLoop& loop_;
  desktop::Descriptor timer_;
  std::function<void()> tick_;
  std::unique_ptr<Registration> watch_;
  std::unique_ptr<Registration> slow_;
  Microseconds interval_{0};
};

}  // namespace quorvane::checker
