// The input method itself, under the text fields of real programs.

#include <gtest/gtest.h>

#include <unistd.h>

#include "apps/OwnSurroundings.h"
#include "tests/support/desktop/Applications.h"

namespace quorvane::tests {
namespace {

DesktopOptions options(bool sync = true) {
  return {.engine = QUORVANE_PROGRAM " server --ibus",
          .sync = sync,
          .variables = {"QUORVANE_KEY_OFFSET=" + std::to_string(keyOffsetOf(::getpid()))}};
}

class Correcting : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string why = HeadlessDesktop::missing(); !why.empty()) GTEST_SKIP() << why;
    desktop.emplace(options());
  }
  std::optional<HeadlessDesktop> desktop;
};

TEST_F(Correcting, Gtk3) {
  for (const char* const kind : {"entry", "view"}) {
    GtkClient client(*desktop, 3, {kind});
    client.focus();
    desktop->screen().type("I recieve teh letter, it doesn't matter. ", Screen::Pause(20));
    EXPECT_TRUE(client.shows("I receive the letter, it doesn't matter. ")) << desktop->log();
  }
}

}  // namespace
}  // namespace quorvane::tests
