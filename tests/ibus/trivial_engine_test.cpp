// The programs of the test desktop that the input method isn't tried in yet, with the least engine
// that there is.

#include <gtest/gtest.h>

#include "tests/support/desktop/Applications.h"

namespace quorvane::tests {
namespace {

using namespace std::chrono_literals;

constexpr const char* kTypedBefore = "He saw teh cat. ";

struct TrivialEngine : testing::Test {
  void SetUp() override {
    if (const std::string why = HeadlessDesktop::missing(); !why.empty()) GTEST_SKIP() << why;
    desktop.emplace(DesktopOptions{
        .engine = QUORVANE_DESKTOP_PROGRAMS "/desktop_trivial_engine --replace", .xim = true});
  }

  std::optional<HeadlessDesktop> desktop;
};

TEST_F(TrivialEngine, ReplacesInFeatherpadOnceItTellsItsTextInTime) {
  EXPECT_TRUE(eventually([&] {
    Editor editor(*desktop, "featherpad");
    editor.focus();
    desktop->screen().type(kTypedBefore);
    return static_cast<bool>(editor.shows("He saw the cat. ", 0, 10s));
  }));
  const auto picture = desktop->file("screen.png");
  desktop->screenshot(picture);
  EXPECT_TRUE(contentOf(picture).starts_with("\x89PNG"));
}

TEST_F(TrivialEngine, ReplacesInFirefoxOnceItTellsItsTextInTime) {
  Browser browser(*desktop);
  browser.focus();
  desktop->screen().type("He saw teh");
  EXPECT_TRUE(eventually([&] {
    EXPECT_TRUE(browser.shows("He saw teh")) << desktop->log();
    desktop->screen().type(" ");
    if (!browser.shows("He saw teh ", 0, 1s)) return true;
    desktop->screen().press("BackSpace");
    return false;
  }));
  EXPECT_TRUE(browser.shows("He saw the "));
  desktop->screen().press("Tab");
  ASSERT_TRUE(browser.isIn(1));
  desktop->screen().type("pass word");
  EXPECT_TRUE(browser.shows("pass word", 1));
}

TEST_F(TrivialEngine, PassesTheKeysOfATerminal) {
  Terminal terminal(*desktop);
  terminal.focus();
  desktop->screen().type(kTypedBefore);
  desktop->screen().press("BackSpace");
  EXPECT_TRUE(terminal.shows(std::string(kTypedBefore) + '\x7f'));
}

}  // namespace
}  // namespace quorvane::tests
