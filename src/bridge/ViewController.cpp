#include "src/bridge/ViewController.h"

#include "src/base/Log.h"
#include "src/bridge/PrivacyConsentController.h"
#include "src/bridge/SharedLayout.h"
#include "src/bridge/ToolCalls.h"

namespace quorvane {
namespace {

constexpr Seconds kSecurityDelay{0.1};

}  // namespace

void ViewController::InstallRequestEventTimer() {
  auto& retimer = instance_.state<SecurityTimerState>().retimer;
  retimer.reset();
  Log(instance_, "INSTALLED INPUTMENU SECURITY TIMER");
  retimer = instance_.platform().runLoop.addTimer(
      kSecurityDelay, Seconds(0),
      [&instance = instance_] { ViewController(instance).CallRequestEventTimer(); });
}

void ViewController::CallRequestEventTimer() {
  auto& state = instance_.state<SecurityTimerState>();
  if (state.RequestEventBusy) return;
  const FlagGuard busy(state.RequestEventBusy);
  Log(instance_, "* DO_INPUTMENU_SECURITY_TIMER *");
  Do_BIM_CallDirectQorvToolCommandAppEvent(instance_, kSecurityTimerCommand);
  state.retimer.reset();
}

void ViewController::determinePencilMenuletPermission() {
  PrivacyConsentController::sharedController(instance_)
      .automationConsentForqorvMenuletPromptIfNeeded(true);
}

void ViewController::requestInputMenuPermissionAndNag() {
  auto& consent = PrivacyConsentController::sharedController(instance_);
  if (consent.automationConsentForqorvInputPromptIfNeeded(true) == PrivacyConsent::Permitted) {
    return;
  }
  consent.nagForInputMenuConsent();
}

void ViewController::requestPencilMenuPermissionAndNag() {
  auto& consent = PrivacyConsentController::sharedController(instance_);
  if (consent.automationConsentForqorvMenuletPromptIfNeeded(true) == PrivacyConsent::Permitted) {
    return;
  }
  consent.nagForPencilMenuletConsent();
}

void ViewController::launchPrivacyAndSecurityPreferencesAutomationSubPane() {
  instance_.platform().workspace.openURL(
      "x-apple.systempreferences:com.apple.preference.security?Privacy_Automation");
}

}  // namespace quorvane
