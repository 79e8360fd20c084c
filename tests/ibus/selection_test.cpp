// The clipboard of an X desktop, between connections of ours and a real program.

#include <gtest/gtest.h>

#include "hosts/desktop/ClipboardFile.h"
#include "hosts/x11/Selection.h"
#include "tests/support/desktop/Applications.h"

namespace quorvane::tests {
namespace {

struct Silence : LogSink {
  void writeLine(std::string_view /*line*/) override {}
};

class SelectionTest : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string why = HeadlessDesktop::missing(); !why.empty()) GTEST_SKIP() << why;
    desktop.emplace(DesktopOptions{.engine = QUORVANE_DESKTOP_PROGRAMS "/desktop_trivial_engine"});
    ASSERT_TRUE(ours.start(*this) && theirs.start(*this));
  }
  struct End {
    bool start(SelectionTest& test) {
      display = x11::Display::open(test.loop, test.desktop->screen().name().c_str());
      if (display) selection = x11::Selection::open(*display, test.loop);
      if (selection) selection->copied = [this] { ++copied; };
      return selection != nullptr;
    }
    std::unique_ptr<x11::Display> display;
    std::unique_ptr<x11::Selection> selection;
    int copied = 0;
  };
  /// What our end finds.
  x11::Selection::Content look() {
    std::optional<x11::Selection::Content> found;
    ours.selection->look([&](x11::Selection::Content content) { found = std::move(content); });
    EXPECT_TRUE(turnsUntil([&] { return found.has_value(); }));
    return found.value_or(x11::Selection::Content{});
  }
  bool noticed(int copies) {
    return turnsUntil([&] { return ours.copied >= copies; });
  }
  template <class Condition>
  bool turnsUntil(Condition condition) {
    return loop.runUntil(condition, std::chrono::steady_clock::now() + std::chrono::seconds(30));
  }

  std::optional<HeadlessDesktop> desktop;
  Silence log;
  desktop::RunLoop loop{log, g_main_context_default()};
  End ours;
  End theirs;
};

TEST_F(SelectionTest, IsReadWrittenAndClearedAndTellsWhoCopied) {
  theirs.selection->own("stra\u00DFe");
  ASSERT_TRUE(noticed(1));
  auto content = look();
  EXPECT_EQ(content.text, "stra\u00DFe");
  EXPECT_TRUE(content.isAll);
  ours.selection->own("first");
  theirs.selection->own(std::string(desktop::kClipboardLimit, 'x'));
  ASSERT_TRUE(noticed(2));
  EXPECT_FALSE(ours.selection->isOwn());
  EXPECT_TRUE(
      eventually([&] { return look().text.value_or("").size() == desktop::kClipboardLimit; }));
  theirs.selection->own(std::string(desktop::kClipboardLimit + 1, 'x'));
  ASSERT_TRUE(noticed(3));
  EXPECT_FALSE(look().text);
  ours.selection->clear();
  content = look();
  EXPECT_TRUE(content.isAll && !content.text);
}

TEST_F(SelectionTest, ComesInPartsAndNobodyWaitsForAnOwnerThatIsSilent) {
  GtkClient client(*desktop, 3, {"view"});
  client.focus();
  const std::string large(1'000'000, 'y');
  client.send("set " + large);
  ASSERT_TRUE(client.shows(large));
  desktop->screen().press("Control_L+a");
  desktop->screen().press("Control_L+c");
  ASSERT_TRUE(noticed(1));
  EXPECT_TRUE(eventually([&] { return look().text == large; })) << "once the owner is in time";
  client.stop();
  const auto content = look();
  EXPECT_TRUE(!content.text && !content.isAll);
  client.goOn();
}

}  // namespace
}  // namespace quorvane::tests
