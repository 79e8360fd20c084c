#pragma once

#include <functional>

#include "hosts/desktop/RunLoop.h"
#include "hosts/desktop/Supervisor.h"
#include "hosts/desktop/WithinKey.h"
#include "platform/LaunchServices.h"

namespace quorvane::desktop {

class LaunchServices final : public quorvane::LaunchServices {
 public:
  LaunchServices(quorvane::FileManager& files, Supervisor& supervisor, RunLoop& runLoop)
      : files_(files), supervisor_(supervisor), runLoop_(runLoop) {}

  OSStatus LSOpenFromRefSpec(const FSRef& ref, std::uint32_t launchFlags) override;
  /// Nor longer than there is anything to wait for: that what was launched has ended counts as the
  /// end of the time, and what has been waited for in vain isn't waited for again.
  OSStatus ReceiveNextEvent(FourCharCode eventClass, std::uint32_t kind, Seconds timeout) override;

  /// The program has been asked to end; unset: it hasn't. Ends a wait at the next turn.
  std::function<bool()> isEnding;
  /// A wait is then over after two seconds.
  WithinKey withinKey;

 private:
  quorvane::FileManager& files_;
  Supervisor& supervisor_;
  RunLoop& runLoop_;
};

}  // namespace quorvane::desktop
