#pragma once
// Launch Services, and the event that tells of an application's launch.

#include "platform/FileManager.h"
#include "platform/MacTypes.h"
#include "platform/Units.h"

namespace quorvane {

inline constexpr OSStatus kLSUnknownErr = -10810;
inline constexpr OSStatus eventLoopTimedOutErr = -9875;

inline constexpr FourCharCode kEventClassApplication = "appl"_4cc;
inline constexpr std::uint32_t kEventAppLaunchNotification = 4;

class LaunchServices {
 public:
  virtual ~LaunchServices() = default;

  /// Starts the application at `ref`, without parameters, and doesn't wait for it. One that runs
  /// already stays the only one: 0, and its event comes at once.
  virtual OSStatus LSOpenFromRefSpec(const FSRef& ref, std::uint32_t launchFlags) = 0;
  /// Turns the run loop until such an event of the application that LSOpenFromRefSpec named last
  /// has come: 0, or until `timeout` has passed: eventLoopTimedOutErr. Keys, messages and timers go
  /// on meanwhile.
  virtual OSStatus ReceiveNextEvent(FourCharCode eventClass, std::uint32_t kind,
                                    Seconds timeout) = 0;
};

}  // namespace quorvane
