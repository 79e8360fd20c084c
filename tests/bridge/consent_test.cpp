// Consent to Apple events: what each status means, what an alert leads to, the security timer.

#include "src/bridge/PrivacyConsentController.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/ViewController.h"
#include "tests/bridge/BridgeTest.h"

namespace quorvane::test {
namespace {

class Consent : public BridgeTest {
 protected:
  /// The pane that the last call has opened.
  [[nodiscard]] std::string pane() const {
    const std::string line = host.journal.lines().back();
    return line.starts_with("openURL ") ? line.substr(line.find('?') + 1) : "none";
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
           {0, PrivacyConsent::Permitted,
            "***** Automation PERMITTED for com.tallowmere.quorvane."},
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
  view.requestInputMenuPermissionAndNag();
  EXPECT_EQ(pane(), "none") << "Cancel";
  EXPECT_EQ(host.alerts.shown.at(0).messageText, "Quorvane needs access to QuorvaneInput");
  host.alerts.answer = NSAlertFirstButtonReturn;
  host.appleEvents.consents["com.tallowmere.menulet"] = -1743;
  view.requestPencilMenuPermissionAndNag();
  EXPECT_EQ(pane(), "Privacy_Accessibility");
  EXPECT_EQ(host.alerts.shown.back().messageText, "Quorvane needs access to QuorvaneMenulet");
  view.launchPrivacyAndSecurityPreferencesAutomationSubPane();
  EXPECT_EQ(pane(), "Privacy_Automation");
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
