#pragma once
// The user's consent to Apple events between the siblings: what the system says of it, and the
// alerts that lead to the pane where it is given.

#include <string_view>

#include "src/base/Instance.h"
#include "src/bridge/Presence.h"

namespace quorvane {

inline constexpr std::string_view quorvaneAppBundleIdentifier = kQuorvaneBundleIdentifier;
inline constexpr std::string_view quorvaneInputBundleIdentifier =
    "com.tallowmere.inputmethod.Quorvane";
inline constexpr std::string_view quorvaneMenuletBundleIdentifier = "com.tallowmere.menulet";
// For questions of the same kind.
inline constexpr std::string_view keynoteBundleIdentifier = "com.apple.iWork.Keynote";
inline constexpr std::string_view powerPointBundleIdentifier = "com.microsoft.PowerPoint";

enum class PrivacyConsent : std::int32_t { Unknown = 0, Permitted = 1, Denied = 2 };

/// Keeps nothing: the system is asked each time, and answers itself or, with `prompt`, the user.
class PrivacyConsentController {
 public:
  explicit PrivacyConsentController(Instance& instance) : instance_(instance) {}
  static PrivacyConsentController& sharedController(Instance& instance) {
    return instance.state<PrivacyConsentController>();
  }

  PrivacyConsent automationConsentForqorvAppPromptIfNeeded(bool prompt);
  PrivacyConsent automationConsentForqorvInputPromptIfNeeded(bool prompt);
  PrivacyConsent automationConsentForqorvMenuletPromptIfNeeded(bool prompt);
  /// Permitted below 10.14, where nobody is asked.
  PrivacyConsent automationConsentForBundleIdentifier(std::string_view identifier, bool prompt);
  void requestMediaConsentNagIfDenied(bool /*nag*/) {}

  // Alerts. They wait for the answer; Cancel changes nothing.
  void nagForQorvAppMenuConsent();
  void nagForInputMenuConsent();
  void nagForPencilMenuletConsent();
  void nagForInputMenuConsentIfNeeded() {}
  void nagForPencilMenuletConsentIfNeeded() {}

  // Panes of the system preferences.
  void launchPrivacyAndSecurityPreferencesMicrophoneSubPane();
  void launchPrivacyAndSecurityPreferencesCameraSubPane();
  /// The pane of accessibility, whatever its name says; ViewController opens the other one.
  void launchPrivacyAndSecurityPreferencesAutomationSubPane();

  void applicationLaunched(const ApplicationNotification& /*notification*/) {}

 private:
  void nag(std::string_view message, std::string_view information);

  Instance& instance_;
};

// Hooks at which the rest of the system could ask for consent. None does.

inline void timerPrivacyAndSecurityInputMenuPermission() {}
inline std::int32_t requestPrivacyAndSecurityQorvAppMenuPermission() { return 0; }
inline void requestPrivacyAndSecurityInputMenuPermission() {}
inline void requestPrivacyAndSecurityPencilMenuletPermission() {}
inline std::int32_t is_determineQorvAppMenuPermission() { return 0; }
inline std::int32_t is_determineInputMenuPermission() { return 0; }

}  // namespace quorvane
