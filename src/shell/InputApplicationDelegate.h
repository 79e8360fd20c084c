#pragma once
// A smaller delegate for the same notifications. It subscribes to nothing itself: who connects it
// calls it.

#include "src/base/Instance.h"

namespace quorvane {

class InputApplicationDelegate {
 public:
  explicit InputApplicationDelegate(Instance& instance) : instance_(instance) {}

  void setMenu(NSMenu* menu) { _menu = menu; }
  [[nodiscard]] NSMenu* menu() const { return _menu; }
  void setAboutMenuItem(NSMenuItem* item) { _aboutMenuItem = item; }
  [[nodiscard]] NSMenuItem* aboutMenuItem() const { return _aboutMenuItem; }

  void awakeFromNib();
  void QuorvaneLaunched(const ApplicationNotification& notification);
  /// Any application's end counts as the main application's.
  void QuorvaneTerminated(const ApplicationNotification& notification);
  void menuWillOpen(NSMenu& menu);

 private:
  Instance& instance_;
  NSMenu* _menu = nullptr;
  NSMenuItem* _aboutMenuItem = nullptr;
};

}  // namespace quorvane
