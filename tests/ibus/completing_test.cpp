// Words completed by keys and by the mouse.

#include "tests/ibus/ServedDesktop.h"

namespace quorvane::tests {
namespace {

using Completing = ServedDesktop;

/// Waits until the panel shows candidates of which `first` is the first.
void awaitCandidates(HeadlessDesktop& desktop, const std::string& first) {
  std::string shown;
  do {
    shown = desktop.panel().await("candidates shown ");
  } while (!shown.substr(shown.find('\t') + 1).starts_with(first + '\t'));
}

TEST_F(Completing, ByKeysAndByTheMouse) {
  const std::string quorvane = QUORVANE_PROGRAM;
  start(true, "/bin/sh -c 'for version in 3 4; do " + quorvane +
                  " settings switches desktop_gtk$version +checking +completion; done; exec " +
                  quorvane + " server --ibus'");
  for (const int version : {3, 4}) {
    GtkClient client(desktop(), version, {"entry"});
    client.focus();
    const auto letters = [&](const char* typed) {
      desktop().panel().skip();
      screen().type(typed, Screen::Pause(20));
      awaitCandidates(desktop(), "account");
    };
    letters("account");
    screen().press("space");
    EXPECT_TRUE(client.shows("account ")) << desktop().log();
    letters("account");
    screen().press("Right");
    screen().press("space");
    EXPECT_TRUE(client.shows("account accounts "));
    letters("account");
    screen().press("2");
    EXPECT_TRUE(client.shows("account accounts accounts"));
    screen().press("space");
    letters("account");
    desktop().panel().send("candidate 2");
    EXPECT_TRUE(client.shows("account accounts accounts accounting"));
  }
}

}  // namespace
}  // namespace quorvane::tests
