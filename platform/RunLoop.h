#pragma once
// The run loop of the one thread: sources, and what is to be done later. Nothing fires inside a
// wait that spins or inside `usleep`, however long it lasts: what falls due then comes at the next
// turn.

#include <functional>
#include <memory>

#include "platform/Registration.h"
#include "platform/Units.h"

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
  /// -[NSObject performSelector:withObject:afterDelay:]: `function` runs once on the run loop,
  /// when `delay` has passed.
  virtual void performAfterDelay(std::function<void()> function, Seconds delay) = 0;
  /// InstallEventLoopTimer: `action` runs when `first` has passed and then every `interval`;
  /// once where `interval` is 0. Timers fire in due order. One that was late fires once
  /// for all that it missed. Destroying the result cancels it, also from within the action.
  [[nodiscard]] virtual std::unique_ptr<Registration> addTimer(Seconds first, Seconds interval,
                                                               std::function<void()> action) = 0;
};

}  // namespace quorvane
