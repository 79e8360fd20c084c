// The input method itself, under the text fields of real programs.

#include <gtest/gtest.h>

#include <unistd.h>

#include <iostream>
#include <set>
#include <thread>

#include "tests/support/desktop/Applications.h"

namespace quorvane::tests {
namespace {

class Correcting : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string why = HeadlessDesktop::missing(); !why.empty()) GTEST_SKIP() << why;
  }
  void start(bool sync = true) {
    const char* const engine = std::getenv("QUORVANE_TEST_ENGINE");
    desktop.emplace(DesktopOptions{
        .engine = engine != nullptr ? engine : QUORVANE_PROGRAM " server --ibus",
        .sync = sync,
        .variables = {"QUORVANE_KEY_OFFSET=" + std::to_string(0x20000000 + ::getpid() * 32)}});
  }
  void settings(const std::vector<std::string>& change) {
    std::vector<std::string> command{QUORVANE_PROGRAM, "settings"};
    command.insert(command.end(), change.begin(), change.end());
    ASSERT_EQ(Program(desktop->launch(command)).wait(), 0) << desktop->log();
  }
  void TearDown() override {
    if (desktop) Program(desktop->launch({QUORVANE_PROGRAM, "stop"})).wait();
  }

  std::optional<HeadlessDesktop> desktop;
};

constexpr const char* kTyped = "I recieve teh letter, it doesn't matter. ";
constexpr const char* kCorrected = "I receive the letter, it doesn't matter. ";

TEST_F(Correcting, OurClients) {
  start();
  for (const int version : {3, 4}) {
    for (const char* const kind : {"entry", "view"}) {
      GtkClient client(*desktop, version, {kind});
      client.focus();
      desktop->screen().type(kTyped, Screen::Pause(20));
      EXPECT_TRUE(client.shows(kCorrected)) << version << kind << desktop->log();
    }
  }
}

TEST_F(Correcting, WordsAreCompletedByKeysAndByTheMouse) {
  start();
  settings({"switches", "desktop_gtk3", "+completion", "+checking", "+corrections"});
  GtkClient client(*desktop, 3, {"entry"});
  client.focus();
  std::this_thread::sleep_for(std::chrono::seconds(5));
  desktop->screen().type("account", Screen::Pause(20));
  desktop->screen().press("Right");
  desktop->screen().press("space");
  EXPECT_TRUE(client.shows("accounts ")) << desktop->log();
}

/// A client that stands still now and then, while somebody types on.
TEST_F(Correcting, AClientThatStallsIsNeverDamaged) {
  for (const bool sync : {false, true}) {
    start(sync);
    int corrected = 0;
    constexpr int kRuns = 10;
    for (int run = 0; run < kRuns; ++run) {
      GtkClient client(*desktop, 3, {"entry"});
      client.focus();
      std::thread stalls([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(60 * run % 700));
        client.stop();
        std::this_thread::sleep_for(std::chrono::milliseconds(400));
        client.goOn();
      });
      desktop->screen().type(kTyped, Screen::Pause(20));
      stalls.join();
      std::this_thread::sleep_for(std::chrono::milliseconds(300));
      const std::string text = client.text();
      const std::set<std::string> right{kTyped, kCorrected,
                                        "I receive teh letter, it doesn't matter. ",
                                        "I recieve the letter, it doesn't matter. "};
      EXPECT_TRUE(right.contains(text)) << text;
      corrected += text == kCorrected ? 1 : 0;
    }
    std::cout << (sync ? "sync " : "async ") << corrected << " of " << kRuns << " corrected\n";
    TearDown();
  }
}

}  // namespace
}  // namespace quorvane::tests
