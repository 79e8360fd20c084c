#pragma once
// The application's delegate: it finishes the start-up, and tracks which application is in front
// and whether the main application and the Pencil Menu run.

#include <array>
#include <memory>

#include "src/base/Instance.h"

namespace quorvane {

class QuorvaneInputAppDelegate {
 public:
  explicit QuorvaneInputAppDelegate(Instance& instance) : instance_(instance) {}

  void awakeFromNib();
  void app_DidFinishLaunching();

  // What the workspace tells. A notification without an application changes nothing but the front.
  void Frontappchanged(const ApplicationNotification& notification);
  void QuorvaneLaunched(const ApplicationNotification& notification);
  void QuorvaneTerminated(const ApplicationNotification& notification);

 private:
  void mainApplicationLaunched(const ProcessSerialNumber& psn);
  void mainApplicationTerminated();

  Instance& instance_;
  std::array<std::unique_ptr<Registration>, 3> observers_;
};

struct AppDelegateState {
  QuorvaneInputAppDelegate* Quorvane_InputAppDelegate = nullptr;
  std::uint32_t App_Permissions_Setting = 0;
};

}  // namespace quorvane
