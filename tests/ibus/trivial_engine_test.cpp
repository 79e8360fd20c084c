// The test desktop itself, with the least engine that there is.

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <optional>

#include "tests/support/desktop/Applications.h"

namespace quorvane::tests {
namespace {

using namespace std::chrono_literals;

constexpr const char* kTypedBefore = "He saw teh cat. ";
constexpr const char* kRight = "He saw the cat. ";

class TrivialEngine : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string why = HeadlessDesktop::missing(); !why.empty()) GTEST_SKIP() << why;
  }

  HeadlessDesktop& desktop(bool xim = false) {
    const std::string engine = QUORVANE_DESKTOP_PROGRAMS "/desktop_trivial_engine --replace";
    if (!desktop_) desktop_.emplace(DesktopOptions{.engine = engine, .xim = xim});
    return *desktop_;
  }
  void typeInto(Application& application) {
    application.focus();
    desktop().screen().type(kTypedBefore);
  }
  /// On a machine that is held up a client may tell its text too late: `attempt` is made again.
  template <class Attempt>
  static bool atLast(Attempt attempt) {
    for (int i = 0; i < 5; ++i)
      if (attempt()) return true;
    return false;
  }
  bool becomes(const std::string& text, GtkClient& client, int field) {
    return atLast([&] {
      client.send("set ");
      EXPECT_TRUE(client.shows("", field));
      typeInto(client);
      return static_cast<bool>(client.shows(text, field, 10s));
    });
  }

 private:
  std::optional<HeadlessDesktop> desktop_;
};

TEST_F(TrivialEngine, ReplacesInEachFieldOfGtk) {
  for (const int version : {3, 4}) {
    GtkClient client(desktop(), version, {"entry", "view", version == 3 ? "purpose" : "password"});
    client.focus();
    for (const int field : {1, 2, 0}) {
      desktop().focusBy([&] { client.send("focus " + std::to_string(field)); });
      const bool tellsNothing = version == 4 && field == 2;
      EXPECT_TRUE(becomes(tellsNothing ? kTypedBefore : kRight, client, field)) << version;
    }
  }
}

TEST_F(TrivialEngine, IsToldNothingOfHiddenText) {
  GtkClient client(desktop(), 3, {"hidden", "entry"});
  desktop().screen().focus(client.window());
  desktop().screen().type(kTypedBefore);
  EXPECT_TRUE(client.shows(kTypedBefore));
  EXPECT_FALSE(desktop().clientHasFocus());
}

TEST_F(TrivialEngine, MeetsAStalledClientInOrder) {
  for (const int version : {3, 4}) {
    EXPECT_TRUE(atLast([&] {
      GtkClient client(desktop(), version, {"entry", "entry"});
      client.focus();
      client.stop();
      desktop().screen().type(kTypedBefore);
      desktop().screen().click(client.window(), 20, 50);
      desktop().screen().type(kTypedBefore);
      client.goOn();
      return client.shows(kRight, 0, 10s) && client.shows(kRight, 1, 10s);
    })) << version;
  }
}

TEST_F(TrivialEngine, ReplacesInEditors) {
  for (const char* const name : {"mousepad", "featherpad"}) {
    EXPECT_TRUE(atLast([&] {
      Editor editor(desktop(), name);
      typeInto(editor);
      return static_cast<bool>(editor.shows(kRight, 0, 10s));
    })) << name;
  }
}

TEST_F(TrivialEngine, ReplacesInFirefox) {
  Browser browser(desktop());
  browser.focus();
  desktop().screen().type("He saw teh");
  EXPECT_TRUE(eventually([&] {  // until it has told its text with a space
    EXPECT_TRUE(browser.shows("He saw teh")) << desktop().log();
    desktop().screen().type(" ");
    if (!browser.shows("He saw teh ", 0, 1s)) return true;
    desktop().screen().press("BackSpace");
    return false;
  }));
  EXPECT_TRUE(browser.shows("He saw the "));
  desktop().screen().press("Tab");
  ASSERT_TRUE(browser.isIn(1));
  desktop().screen().type("pass word");
  EXPECT_TRUE(browser.shows("pass word", 1));
}

TEST_F(TrivialEngine, PassesTheKeysOfATerminal) {
  Terminal terminal(desktop(true));
  typeInto(terminal);
  desktop().screen().press("BackSpace");
  EXPECT_TRUE(terminal.shows(std::string(kTypedBefore) + '\x7f'));
  desktop().panel().send("property item 0");
  EXPECT_TRUE(terminal.shows(std::string(kTypedBefore) + "\x7fitem"));
}

TEST_F(TrivialEngine, AnswersThePanel) {
  GtkClient client(desktop(), 3, {"entry"});
  client.focus();
  EXPECT_EQ(desktop().panel().await("property "), "item 0 0 1 An item");
  desktop().screen().type("?");
  EXPECT_EQ(desktop().panel().await("candidates "), "shown 0 5 2\tone\ttwo\\n");
  EXPECT_EQ(desktop().panel().await("auxiliary "), "shown note");
  desktop().panel().send("candidate 1");
  EXPECT_TRUE(client.shows("?two"));
  desktop().panel().send("property item 0");
  EXPECT_TRUE(client.shows("?twoitem"));
  const std::filesystem::path picture = desktop().file("screen.png");
  desktop().screenshot(picture);
  EXPECT_TRUE(contentOf(picture).starts_with("\x89PNG"));
}

TEST_F(TrivialEngine, KeysGoOnWhereItOrTheDaemonHasDied) {
  GtkClient client(desktop(), 3, {"entry"});
  client.focus();
  ASSERT_NE(desktop().engine(), 0);
  ::kill(desktop().engine(), SIGKILL);
  desktop().screen().type("ab");
  EXPECT_TRUE(client.shows("ab"));
  desktop().selectEngine();
  desktop().screen().type(" teh ");
  EXPECT_TRUE(client.shows("ab the "));
  desktop().killDaemon();
  desktop().screen().type("cd");
  EXPECT_TRUE(client.shows("ab the cd"));
  desktop().startDaemon();
  EXPECT_TRUE(eventually([&] { return desktop().clientHasFocus(); }));
  desktop().screen().type(" teh ");
  EXPECT_TRUE(client.shows("ab the cd the "));
}

}  // namespace
}  // namespace quorvane::tests
