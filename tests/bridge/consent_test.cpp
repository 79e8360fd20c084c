// Consent to Apple events: what each status means, what an alert leads to, the security timer.

#include "src/bridge/PrivacyConsentController.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/ViewController.h"
#include "tests/bridge/BridgeTest.h"

namespace quorvane::test {
namespace {

class Consent : public BridgeTest {
 protected:
  PrivacyConsentController& consent = PrivacyConsentController::sharedController(instance);
  ViewController view{instance};
};

TEST_F(Consent, EachStatusHasItsMeaningAndItsLine) {
  const std::string name = "com.tallowmere.quorvane";
  for (const auto& [status, meaning, line] :
       std::vector<std::tuple<OSStatus, PrivacyConsent, std::string>>{
           {0, PrivacyConsent::Permitted, "***** Automation PERMITTED for " + name + "."},
           {-1744, PrivacyConsent::Unknown,
            "***** Automation consent NOT YET GRANTED for " + name +
                ", would require user consent."},
           {-1743, PrivacyConsent::Denied, "***** Automation of " + name + " NOT PERMITTED."},
           {-600, PrivacyConsent::Unknown, name + " not running, automation consent unknown."},
           {-50, PrivacyConsent::Unknown,
            "-[PrivacyConsentController automationConsentForBundleIdentifier:promptIfNeeded:] "
            "switch statement fell through: " +
                name + " -50"}}) {
    host.appleEvents.consents[name] = status;
    EXPECT_EQ(consent.automationConsentForqorvAppPromptIfNeeded(false), meaning);
    EXPECT_EQ(host.log.lines.back(), line);
    EXPECT_EQ(host.journal.lines().back().find("asking"), std::string::npos);
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
  host.alerts.answer = NSAlertFirstButtonReturn;
  host.appleEvents.consents["com.tallowmere.menulet"] = -1743;
  view.requestPencilMenuPermissionAndNag();
  view.launchPrivacyAndSecurityPreferencesAutomationSubPane();
  const std::string ask = "AEDeterminePermissionToAutomateTarget com.tallowmere.";
  const std::string pane =
      "openURL x-apple.systempreferences:com.apple.preference.security?Privacy_";
  const auto alert = [](const std::string& name, const std::string& whole) {
    return "runModal 0 Quorvane needs access to " + name +
           ": Quorvane can't function correctly unless you grant permission for Automation "
           "control of " +
           name + whole +
           ".\n\nPlease change the setting. [Change Security & Privacy Preferences] [Cancel] -> ";
  };
  EXPECT_EQ(host.journal.lines(), (Lines{ask + "menulet **** **** asking -> 0",
                                         ask + "inputmethod.Quorvane **** **** asking -> -600",
                                         alert("QuorvaneInput", " (Input Menu)") + "1001",
                                         ask + "menulet **** **** asking -> -1743",
                                         alert("QuorvaneMenulet", " (Pencil Menu)") + "1000",
                                         pane + "Accessibility", pane + "Automation"}));
}

TEST_F(Consent, TheSecurityTimerFiresOnce) {
  launchKnown();
  for (int i = 0; i < 2; ++i) {
    view.InstallRequestEventTimer();
    host.wait(90'000'000);
    EXPECT_EQ(app.field(1), 0U);
  }
  host.wait(500'000'000);
  EXPECT_EQ(std::ranges::count(host.log.lines, "* DO_INPUTMENU_SECURITY_TIMER *"), 1);
  EXPECT_EQ(app.field(1), 1U << 29);
  quitApplicationWithBundleID(instance, {1, 8193});
  EXPECT_EQ(host.journal.lines().back(), "AESendMessage aevt quit psn  1 8193 1 -1 -> 0");
  EXPECT_EQ(Get_QorvFocusWindowFlag(instance), 0) << "an empty reply";
  host.appleEvents.reply = {1, 2};
  EXPECT_EQ(Get_QorvFocusWindowFlag(instance), 1);
  EXPECT_TRUE(host.journal.lines().back().starts_with("AESendGetData pFWw psn  1 "));
  host.appleEvents.sendResult = -1712;
  EXPECT_EQ(Get_QorvFocusWindowFlag(instance), 0);
}

}  // namespace
}  // namespace quorvane::test
