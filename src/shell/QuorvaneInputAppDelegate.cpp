#include "src/shell/QuorvaneInputAppDelegate.h"

#include <string_view>

#include "src/base/Log.h"
#include "src/bridge/Presence.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/session/QuorvaneInputController.h"
#include "src/shell/QBIM_IMK_Start.h"

namespace quorvane {
namespace {

std::string_view bundleOf(const ApplicationNotification& notification) {
  return notification.application != nullptr ? notification.application->bundleIdentifier
                                             : std::string_view();
}

FourCharCode signatureOf(Process& process, const ProcessSerialNumber& psn) {
  ProcessInfoRec info;
  Set_InfoRec_ProcessInfoRec(process, info);
  const OSStatus status = process.platform().processManager.GetProcessInformation(psn, info);
  return status == noErr ? info.processSignature : 0;
}

}  // namespace

void QuorvaneInputAppDelegate::awakeFromNib() {
  process_.state<AppDelegateState>().Quorvane_InputAppDelegate = this;
  app_DidFinishLaunching();
}

void QuorvaneInputAppDelegate::app_DidFinishLaunching() {
  set_INITED_FLAG(process_, 1);
  Init_GetQUORVANEPROCESS(process_);
  Workspace& workspace = process_.platform().workspace;
  observers_ = {
      workspace.addObserver(WorkspaceNotification::DidLaunchApplication,
                            [this](const auto& notification) { QuorvaneLaunched(notification); }),
      workspace.addObserver(WorkspaceNotification::DidTerminateApplication,
                            [this](const auto& notification) { QuorvaneTerminated(notification); }),
      workspace.addObserver(WorkspaceNotification::DidActivateApplication,
                            [this](const auto& notification) { Frontappchanged(notification); }),
  };
  Init_From_Delegate_applicationDidFinishLaunching(process_);
}

void QuorvaneInputAppDelegate::Frontappchanged(const ApplicationNotification& notification) {
  auto& presence = process_.state<PresenceState>();
  if (notification.application != nullptr) {
    presence.front_app_pid = notification.application->processIdentifier;
  }
  presence.frontapp_psn = notification.serialNumber;
  presence.frontapp_signature = signatureOf(process_, presence.frontapp_psn);
  if (bundleOf(notification) == kQuorvaneBundleIdentifier) {
    presence.quorvane_psn = presence.frontapp_psn;
    presence.quorvane_pid = presence.front_app_pid;
  }
}

void QuorvaneInputAppDelegate::QuorvaneLaunched(const ApplicationNotification& notification) {
  if (bundleOf(notification) == kPencilMenuBundleIdentifier) {
    Log(process_, "QuorvaneLaunched ", kPencilMenuBundleIdentifier);
    process_.state<LaunchServerState>().Penc_pid = notification.application->processIdentifier;
  } else if (bundleOf(notification) == kQuorvaneBundleIdentifier) {
    mainApplicationLaunched(notification.serialNumber);
  }
}

void QuorvaneInputAppDelegate::mainApplicationLaunched(const ProcessSerialNumber& psn) {
  Log(process_, "QuorvaneLaunched ", kQuorvaneBundleIdentifier);
  Set_Quorvane_Is_Active(process_, 1);
  process_.state<AppDelegateState>().App_Permissions_Setting = 1;
  process_.state<PresenceState>().quorvane_psn = psn;
  get_quorvane_pid(process_);
  Init_GetQUORVANEPROCESS(process_);
}

void QuorvaneInputAppDelegate::QuorvaneTerminated(const ApplicationNotification& notification) {
  if (bundleOf(notification) == kPencilMenuBundleIdentifier) {
    Log(process_, "QuorvaneTerminated ", kPencilMenuBundleIdentifier);
    process_.state<LaunchServerState>().Penc_pid = 0;
  } else if (bundleOf(notification) == kQuorvaneBundleIdentifier) {
    mainApplicationTerminated();
  }
}

void QuorvaneInputAppDelegate::mainApplicationTerminated() {
  Log(process_, "QuorvaneTerminated ", kQuorvaneBundleIdentifier);
  Set_Quorvane_Is_Active(process_, 0);
  auto& presence = process_.state<PresenceState>();
  presence.quorvane_psn = {};
  presence.quorvane_pid = 0;
}

}  // namespace quorvane
