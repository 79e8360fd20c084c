#include "src/shell/InputApplicationDelegate.h"

#include "src/base/Log.h"
#include "src/bridge/Presence.h"
#include "src/bridge/PrivacyConsentController.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/menu/InputMenu.h"
#include "src/shell/QuorvaneInputAppDelegate.h"

namespace quorvane {

void InputApplicationDelegate::awakeFromNib() {
  instance_.state<InputMenuState>().qorvinputMenu = menu();
}

void InputApplicationDelegate::QuorvaneLaunched(const ApplicationNotification& notification) {
  if (!concerns(notification, kQuorvaneBundleIdentifier)) return;
  Set_Quorvane_Is_Active(instance_, 1);
  timerPrivacyAndSecurityInputMenuPermission();
  instance_.state<AppDelegateState>().App_Permissions_Setting = 1;
}

void InputApplicationDelegate::QuorvaneTerminated(const ApplicationNotification& /*notification*/) {
  Set_Quorvane_Is_Active(instance_, 0);
}

void InputApplicationDelegate::menuWillOpen(NSMenu& /*menu*/) {
  Log(instance_, "InputApplicationDelegate menuWillOpen");
}

}  // namespace quorvane
