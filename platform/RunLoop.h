#pragma once
// The run loop of the one thread: sources, and what is to be done later. Nothing fires inside a
// wait that spins or inside `usleep`, however long it lasts: what falls due then comes at the next
// turn.

#include <functional>
#include <memory>

#include "platform/Registration.h"

namespace quorvane {

class CFRunLoopSource {
 public:
  virtual ~CFRunLoopSource() = default;
};

class CFRunLoop {
 public:
  virtual ~CFRunLoop() = default;
};

class RunLoop {
 public:
  virtual ~RunLoop() = default;
  /// Null on failure.
  virtual CFRunLoop* CFRunLoopGetCurrent() = 0;
  /// In kCFRunLoopCommonModes. The run loop keeps the source, and the source its port.
  virtual void CFRunLoopAddSource(CFRunLoop& loop, std::shared_ptr<CFRunLoopSource> source) = 0;
  /// -[NSObject performSelector:withObject:afterDelay:]: `function` runs once on the run loop, so
  /// many seconds from now.
  virtual void performAfterDelay(std::function<void()> function, double seconds) = 0;
  /// InstallEventLoopTimer: `action` runs `first` seconds from now and then every `interval`
  /// seconds; once where `interval` is 0. Timers fire in due order. One that was late fires once
  /// for all that it missed. Destroying the result cancels it, also from within the action.
  [[nodiscard]] virtual std::unique_ptr<Registration> addTimer(double first, double interval,
                                                               std::function<void()> action) = 0;
};

}  // namespace quorvane
