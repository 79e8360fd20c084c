#pragma once
// The application's delegate: it finishes the start-up, tracks which application is in front and
// whether the main application and the Pencil Menu run, and refreshes the Input Menu as it opens.

#include <array>
#include <memory>
#include <string_view>

#include "src/base/Instance.h"

namespace quorvane {

/// It is about that application, and names it.
[[nodiscard]] bool concerns(const ApplicationNotification& notification,
                            std::string_view bundleIdentifier);

class QuorvaneInputAppDelegate : public NSMenuDelegate {
 public:
  explicit QuorvaneInputAppDelegate(Instance& instance);

  void setMenu(NSMenu* menu) { _menu = menu; }
  [[nodiscard]] NSMenu* menu() const { return _menu; }
  void awakeFromNib();
  void app_DidFinishLaunching();
  void didFinishLaunchingWithOptions();

  // What the workspace tells. Without an application a notification does nothing.
  void Frontappchanged(const ApplicationNotification& notification);
  void QuorvaneLaunched(const ApplicationNotification& notification);
  void QuorvaneTerminated(const ApplicationNotification& notification);

  // What the menu tells. All but `menuWillOpen` only log; every key equivalent is claimed.
  void menuNeedsUpdate(NSMenu& menu) override;
  void menuWillOpen(NSMenu& menu) override;
  void menuDidClose(NSMenu& menu) override;
  bool performKeyEquivalent(const NSEvent& event) override;
  void menuWillSendAction(const NSMenuItem& item) override;
  void menuDidSendAction(NSMenu& menu) override;
  void DidEndTracking(NSMenu& menu) override;

 private:
  void refreshMenu(const NSMenu& menu);
  void mainApplicationLaunched(const ProcessSerialNumber& psn);
  void mainApplicationTerminated();

  Instance& instance_;
  NSMenu* _menu = nullptr;
  std::array<std::unique_ptr<Registration>, 3> observers_;
};

struct AppDelegateState {
  QuorvaneInputAppDelegate* Quorvane_InputAppDelegate = nullptr;
  std::uint32_t App_Permissions_Setting = 0;
  std::int64_t submenucount = 0;  ///< openings of the menu since it was last refreshed
};

}  // namespace quorvane
