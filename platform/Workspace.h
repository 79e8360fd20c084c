#pragma once
// NSWorkspace: running applications, the one in front, and notice of their coming and going.

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/MacTypes.h"
#include "platform/Registration.h"

namespace quorvane {

struct NSRunningApplication {
  std::int32_t processIdentifier = 0;
  std::string bundleIdentifier;  ///< empty: it has none
  bool isActive = false;
};

enum class WorkspaceNotification {
  DidLaunchApplication,
  DidTerminateApplication,
  DidActivateApplication
};

/// The user info of a notification.
struct ApplicationNotification {
  const NSRunningApplication* application = nullptr;  ///< "NSWorkspaceApplicationKey"; may be null
  ProcessSerialNumber serialNumber;  ///< the two "NSApplicationProcessSerialNumber" keys
};

class Workspace {
 public:
  using Observer = std::function<void(const ApplicationNotification&)>;
  virtual ~Workspace() = default;

  /// Kept current by the host; reading it makes no system call. Valid until the run loop turns.
  virtual std::span<const NSRunningApplication> runningApplications() = 0;
  /// Null where nothing is in front.
  virtual const NSRunningApplication* frontmostApplication() = 0;
  virtual const NSRunningApplication* menuBarOwningApplication() = 0;
  /// openURLs:withAppBundleIdentifier:options:additionalEventParamDescriptor:launchIdentifiers:
  /// with one address, no descriptor and no identifiers. False where it can't be opened.
  virtual bool openURLs(const std::string& address, std::string_view bundleIdentifier,
                        std::uint32_t options) = 0;
  /// openURL: with the user's own choice of a program. False where it can't be opened.
  virtual bool openURL(const std::string& address) = 0;
  /// Starts the application at this path and doesn't wait for it, or brings the running one
  /// forward. False where there is none or it can't be started.
  virtual bool launchApplication(const std::string& path) = 0;
  /// The observer is called on the run loop, in the order of registration.
  [[nodiscard]] virtual std::unique_ptr<Registration> addObserver(WorkspaceNotification name,
                                                                  Observer observer) = 0;
};

}  // namespace quorvane
