#include "src/bridge/PrivacyConsentController.h"

#include <algorithm>
#include <array>

#include "src/base/Log.h"
#include "src/base/OSVersion.h"

namespace quorvane {
namespace {

constexpr std::uint16_t kFirstWithConsent = 1014;
constexpr std::string_view kMethod =
    "-[PrivacyConsentController automationConsentForBundleIdentifier:promptIfNeeded:]";

/// What a status means; the log line has the identifier between its two parts.
struct ConsentRow {
  OSStatus status;
  PrivacyConsent consent;
  std::string_view before, after;
};
constexpr std::array<ConsentRow, 4> kConsents{{
    {noErr, PrivacyConsent::Permitted, "***** Automation PERMITTED for ", "."},
    {errAEEventWouldRequireUserConsent, PrivacyConsent::Unknown,
     "***** Automation consent NOT YET GRANTED for ", ", would require user consent."},
    {errAEEventNotPermitted, PrivacyConsent::Denied, "***** Automation of ", " NOT PERMITTED."},
    {procNotFound, PrivacyConsent::Unknown, "", " not running, automation consent unknown."},
}};

void openPane(Instance& instance, const char* address) {
  instance.platform().workspace.openURL(address);
}

}  // namespace

PrivacyConsent PrivacyConsentController::automationConsentForqorvAppPromptIfNeeded(bool prompt) {
  return automationConsentForBundleIdentifier(quorvaneAppBundleIdentifier, prompt);
}

PrivacyConsent PrivacyConsentController::automationConsentForqorvInputPromptIfNeeded(bool prompt) {
  return automationConsentForBundleIdentifier(quorvaneInputBundleIdentifier, prompt);
}

PrivacyConsent PrivacyConsentController::automationConsentForqorvMenuletPromptIfNeeded(
    bool prompt) {
  return automationConsentForBundleIdentifier(quorvaneMenuletBundleIdentifier, prompt);
}

PrivacyConsent PrivacyConsentController::automationConsentForBundleIdentifier(
    std::string_view identifier, bool prompt) {
  if (Get_OS_MAC_VERSION(instance_) < kFirstWithConsent) return PrivacyConsent::Permitted;
  const std::span bytes(reinterpret_cast<const std::uint8_t*>(identifier.data()),
                        identifier.size());
  const OSStatus status = instance_.platform().appleEvents.AEDeterminePermissionToAutomateTarget(
      {typeApplicationBundleID, bytes}, typeWildCard, typeWildCard, prompt);
  const auto* row = std::ranges::find(kConsents, status, &ConsentRow::status);
  if (row == kConsents.end()) {
    Log(instance_, kMethod, " switch statement fell through: ", identifier, " ", status);
    return PrivacyConsent::Unknown;
  }
  Log(instance_, row->before, identifier, row->after);
  return row->consent;
}

void PrivacyConsentController::nagForQorvAppMenuConsent() {
  nag("Quorvane Input Menu needs access to Quorvane",
      "Quorvane Input Menu can't function correctly unless you grant permission for Automation "
      "control of Quorvane.\n\nPlease change the setting.");
}

void PrivacyConsentController::nagForInputMenuConsent() {
  nag("Quorvane needs access to QuorvaneInput",
      "Quorvane can't function correctly unless you grant permission for Automation control of "
      "QuorvaneInput (Input Menu).\n\nPlease change the setting.");
}

void PrivacyConsentController::nagForPencilMenuletConsent() {
  nag("Quorvane needs access to QuorvaneMenulet",
      "Quorvane can't function correctly unless you grant permission for Automation control of "
      "QuorvaneMenulet (Pencil Menu).\n\nPlease change the setting.");
}

void PrivacyConsentController::nag(std::string_view message, std::string_view information) {
  const NSAlert alert{NSAlertStyleWarning,
                      std::string(message),
                      std::string(information),
                      {"Change Security & Privacy Preferences", "Cancel"}};
  if (instance_.platform().alerts.runModal(alert) != NSAlertFirstButtonReturn) return;
  launchPrivacyAndSecurityPreferencesAutomationSubPane();
}

void PrivacyConsentController::launchPrivacyAndSecurityPreferencesMicrophoneSubPane() {
  openPane(instance_, "x-apple.systempreferences:com.apple.preference.security?Privacy_Microphone");
}

void PrivacyConsentController::launchPrivacyAndSecurityPreferencesCameraSubPane() {
  openPane(instance_, "x-apple.systempreferences:com.apple.preference.security?Privacy_Camera");
}

void PrivacyConsentController::launchPrivacyAndSecurityPreferencesAutomationSubPane() {
  openPane(instance_,
           "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility");
}

}  // namespace quorvane
