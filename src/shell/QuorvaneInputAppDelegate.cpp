#include "src/shell/QuorvaneInputAppDelegate.h"

#include "src/base/Log.h"
#include "src/bridge/Presence.h"
#include "src/bridge/PrivacyConsentController.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/menu/InputMenu.h"
#include "src/session/QuorvaneInputController.h"
#include "src/shell/QBIM_IMK_Start.h"

namespace quorvane {
namespace {

FourCharCode signatureOf(Instance& instance, const ProcessSerialNumber& psn) {
  ProcessInfoRec info;
  Set_InfoRec_ProcessInfoRec(instance, info);
  const OSStatus status = instance.platform().processManager.GetProcessInformation(psn, info);
  return status == noErr ? info.processSignature : 0;
}

}  // namespace

bool concerns(const ApplicationNotification& notification, std::string_view bundleIdentifier) {
  const NSRunningApplication* const application = notification.application;
  return application != nullptr && application->bundleIdentifier == bundleIdentifier;
}

QuorvaneInputAppDelegate::QuorvaneInputAppDelegate(Instance& instance) : instance_(instance) {
  instance.state<AppDelegateState>().Quorvane_InputAppDelegate = this;
}

void QuorvaneInputAppDelegate::awakeFromNib() {
  instance_.state<InputMenuState>().qorvinputMenu = menu();
  app_DidFinishLaunching();
}

void QuorvaneInputAppDelegate::app_DidFinishLaunching() {
  set_INITED_FLAG(instance_, 1);
  Init_GetQUORVANEPROCESS(instance_);
  Workspace& workspace = instance_.platform().workspace;
  observers_ = {
      workspace.addObserver(WorkspaceNotification::DidLaunchApplication,
                            [this](const auto& notification) { QuorvaneLaunched(notification); }),
      workspace.addObserver(WorkspaceNotification::DidTerminateApplication,
                            [this](const auto& notification) { QuorvaneTerminated(notification); }),
      workspace.addObserver(WorkspaceNotification::DidActivateApplication,
                            [this](const auto& notification) { Frontappchanged(notification); }),
  };
  if (menu() != nullptr) menu()->delegate = this;
  Init_From_Delegate_applicationDidFinishLaunching(instance_);
}

void QuorvaneInputAppDelegate::didFinishLaunchingWithOptions() {
  Log(instance_, "didFinishLaunchingWithOptions");
}

void QuorvaneInputAppDelegate::Frontappchanged(const ApplicationNotification& notification) {
  if (notification.application == nullptr) return;
  auto& presence = instance_.state<PresenceState>();
  presence.front_app_pid = notification.application->processIdentifier;
  presence.frontapp_psn = notification.serialNumber;
  presence.frontapp_signature = signatureOf(instance_, presence.frontapp_psn);
  if (concerns(notification, kQuorvaneBundleIdentifier)) {
    presence.quorvane_psn = presence.frontapp_psn;
    presence.quorvane_pid = presence.front_app_pid;
  }
}

void QuorvaneInputAppDelegate::QuorvaneLaunched(const ApplicationNotification& notification) {
  if (concerns(notification, kPencilMenuBundleIdentifier)) {
    Log(instance_, "QuorvaneLaunched ", kPencilMenuBundleIdentifier);
    instance_.state<LaunchServerState>().Penc_pid = notification.application->processIdentifier;
  } else if (concerns(notification, kQuorvaneBundleIdentifier)) {
    mainApplicationLaunched(notification.serialNumber);
  }
}

void QuorvaneInputAppDelegate::mainApplicationLaunched(const ProcessSerialNumber& psn) {
  Log(instance_, "QuorvaneLaunched ", kQuorvaneBundleIdentifier);
  Set_Quorvane_Is_Active(instance_, 1);
  Log(instance_, "**** Quorvane App Security Permissions IMK");
  timerPrivacyAndSecurityInputMenuPermission();
  instance_.state<AppDelegateState>().App_Permissions_Setting = 1;
  instance_.state<PresenceState>().quorvane_psn = psn;
  get_quorvane_pid(instance_);
  Init_GetQUORVANEPROCESS(instance_);
}

void QuorvaneInputAppDelegate::QuorvaneTerminated(const ApplicationNotification& notification) {
  if (concerns(notification, kPencilMenuBundleIdentifier)) {
    Log(instance_, "QuorvaneTerminated ", kPencilMenuBundleIdentifier);
    instance_.state<LaunchServerState>().Penc_pid = 0;
  } else if (concerns(notification, kQuorvaneBundleIdentifier)) {
    mainApplicationTerminated();
  }
}

void QuorvaneInputAppDelegate::mainApplicationTerminated() {
  Log(instance_, "QuorvaneTerminated ", kQuorvaneBundleIdentifier);
  Set_Quorvane_Is_Active(instance_, 0);
  auto& presence = instance_.state<PresenceState>();
  presence.quorvane_psn = {};
  presence.quorvane_pid = 0;
}

}  // namespace quorvane
