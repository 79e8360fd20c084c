#pragma once
// Asks for consent and, where it isn't given, alerts; and a timer that has the main application do
// the same on its side.

#include <memory>

#include "src/base/Instance.h"

namespace quorvane {

struct SecurityTimerState {
  std::unique_ptr<Registration> retimer;  ///< null: none is pending
  bool RequestEventBusy = false;
};

class ViewController {
 public:
  explicit ViewController(Instance& instance) : instance_(instance) {}

  /// In a tenth of a second, once. One that is pending begins anew.
  void InstallRequestEventTimer();
  void CallRequestEventTimer();
  void determinePencilMenuletPermission();
  // Anything but permission is followed by the alert.
  void requestInputMenuPermissionAndNag();
  void requestPencilMenuPermissionAndNag();
  /// The pane of automation.
  void launchPrivacyAndSecurityPreferencesAutomationSubPane();

 private:
  Instance& instance_;
};

}  // namespace quorvane
