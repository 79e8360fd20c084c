// Consent to Apple events: what each status means, what an alert leads to, the security timer.

#include "src/bridge/PrivacyConsentController.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/ViewController.h"
#include "tests/bridge/BridgeTest.h"

namespace quorvane::test {
namespace {

constexpr std::string_view kPanes = "x-apple.systempreferences:com.apple.preference.security?";

class Consent : public BridgeTest {
 protected:
  [[nodiscard]] std::size_t opened(std::string_view pane) const {
    return static_cast<std::size_t>(std::ranges::count(
        host.journal.lines(), std::string("openURL ").append(kPanes).append(pane)));
  }

  PrivacyConsentController& consent = PrivacyConsentController::sharedController(instance);
  ViewController view{instance};
};

TEST_F(Consent, EachStatusHasItsMeaningAndItsLine) {
  struct Row {
    OSStatus status;
    PrivacyConsent meaning;
    std::string_view line;
  };
  for (const Row& row : std::initializer_list<Row>{
           {0, PrivacyConsent::Permitted, "***** Automation PERMITTED for com.tallowmere.quorvane."},
           {-1744, PrivacyConsent::Unknown,
            "***** Automation consent NOT YET GRANTED for com.tallowmere.quorvane, would require "
            "user consent."},
           {-1743, PrivacyConsent::Denied,
            "***** Automation of com.tallowmere.quorvane NOT PERMITTED."},
           {-600, PrivacyConsent::Unknown,
            "com.tallowmere.quorvane not running, automation consent unknown."},
           {-50, PrivacyConsent::Unknown,
            "-[PrivacyConsentController automationConsentForBundleIdentifier:promptIfNeeded:] "
            "switch statement fell through: com.tallowmere.quorvane -50"}}) {
    host.appleEvents.consents["com.tallowmere.quorvane"] = row.status;
    EXPECT_EQ(consent.automationConsentForqorvAppPromptIfNeeded(false), row.meaning);
    EXPECT_EQ(host.log.lines.back(), row.line);
  }
  EXPECT_EQ(host.journal.lines().back(),
            "AEDeterminePermissionToAutomateTarget com.tallowmere.quorvane **** **** -> -50");
}

TEST_F(Consent, BelowTenFourteenNobodyIsAsked) {
  host.application.appKitVersion = 1561;
  view.requestInputMenuPermissionAndNag();
  view.determinePencilMenuletPermission();
  EXPECT_EQ(consent.automationConsentForBundleIdentifier("none", true), PrivacyConsent::Permitted);
  EXPECT_EQ(host.journal.lines(), Lines{});
}

TEST_F(Consent, WhatIsntPermittedIsAlertedAndTheFirstButtonLeadsToAPane) {
  host.appleEvents.consents["com.tallowmere.menulet"] = 0;
  view.requestPencilMenuPermissionAndNag();
  EXPECT_TRUE(host.alerts.shown.empty());
  view.requestInputMenuPermissionAndNag();
  EXPECT_EQ(opened("Privacy_Accessibility"), 0U) << "Cancel";
  host.alerts.answer = NSAlertFirstButtonReturn;
  host.appleEvents.consents["com.tallowmere.menulet"] = -1743;
  view.requestPencilMenuPermissionAndNag();
  consent.nagForQorvAppMenuConsent();
  ASSERT_EQ(host.alerts.shown.size(), 3U);
  EXPECT_EQ(host.alerts.shown[0].messageText, "Quorvane needs access to QuorvaneInput");
  EXPECT_EQ(host.alerts.shown[1].messageText, "Quorvane needs access to QuorvaneMenulet");
  EXPECT_EQ(host.alerts.shown[2].buttons,
            (Lines{"Change Security & Privacy Preferences", "Cancel"}));
  EXPECT_EQ(opened("Privacy_Accessibility"), 2U);
  view.launchPrivacyAndSecurityPreferencesAutomationSubPane();
  consent.launchPrivacyAndSecurityPreferencesMicrophoneSubPane();
  consent.launchPrivacyAndSecurityPreferencesCameraSubPane();
  EXPECT_EQ(opened("Privacy_Automation") + opened("Privacy_Microphone") + opened("Privacy_Camera"),
            3U);
}

TEST_F(Consent, TheSecurityTimerFiresOnce) {
  launchKnown();
  view.InstallRequestEventTimer();
  host.wait(90'000'000);
  view.InstallRequestEventTimer();
  host.wait(90'000'000);
  EXPECT_EQ(app.field(1), 0U);
  host.wait(500'000'000);
  EXPECT_EQ(std::ranges::count(host.log.lines, "* DO_INPUTMENU_SECURITY_TIMER *"), 1);
  EXPECT_EQ(app.field(1), 1U << 29);
  EXPECT_EQ(instance.state<SecurityTimerState>().retimer, nullptr);
  quitApplicationWithBundleID(instance, {1, 8193});
  EXPECT_EQ(host.journal.lines().back(), "AESendMessage aevt quit psn  1 8193 1 -1 -> 0");
}

}  // namespace
}  // namespace quorvane::test
