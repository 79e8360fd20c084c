// The test desktop itself, with the least engine that there is.

#include <gtest/gtest.h>

#include <chrono>

#include "tests/support/desktop/Applications.h"

namespace quorvane::tests {
namespace {

class TrivialEngine : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string why = HeadlessDesktop::missing(); !why.empty()) GTEST_SKIP() << why;
    const auto start = std::chrono::steady_clock::now();
    desktop.emplace(
        DesktopOptions{.engine = QUORVANE_DESKTOP_PROGRAMS "/desktop_trivial_engine --replace"});
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    RecordProperty("seconds", std::to_string(took.count()));
    printf("up in %.3f s\n", took.count());
  }
  std::optional<HeadlessDesktop> desktop;
};

TEST_F(TrivialEngine, Gtk3) {
  for (const char* const kind : {"entry", "view"}) {
    GtkClient client(*desktop, 3, {kind});
    client.focus();
    desktop->screen().type("He saw teh cat. ");
    EXPECT_TRUE(client.shows("He saw the cat. ")) << desktop->log();
  }
}

}  // namespace
}  // namespace quorvane::tests
