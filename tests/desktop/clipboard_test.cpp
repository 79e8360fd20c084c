#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "hosts/desktop/ClipboardFile.h"
#include "tests/support/DesktopStage.h"

namespace quorvane::tests {
namespace {

struct ClipboardTest : testing::Test {
  void holds(const std::string& text) const { EXPECT_EQ(clipboard.text(), text); }

  DesktopStage stage;
  desktop::ClipboardFile clipboard{stage.configuration().runtimeDirectory, stage.host().log()};
};

TEST_F(ClipboardTest, WhatACopyReplacedIsGivenBack) {
  clipboard.copy("first");
  clipboard.copy("second");
  holds("second");
  clipboard.takeBackCopy();
  holds("first");
  clipboard.lend("to be pasted");
  clipboard.copy("copied meanwhile");
  clipboard.takeBackCopy();
  holds("to be pasted");
  clipboard.endLoan();
  holds("first");
  struct stat status {};
  ASSERT_EQ(::stat(stage.runtimeFile("clipboard").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600U);
  clipboard.takeBackCopy();
  EXPECT_EQ(clipboard.text(), std::nullopt) << "nothing was kept: nothing stood there";
  EXPECT_EQ(clipboard.age(), std::nullopt);
}

TEST_F(ClipboardTest, StaysWhereATextIsTooLongOrCantBeWritten) {
  const std::string longest(desktop::kClipboardLimit, 'x');
  ASSERT_TRUE(clipboard.copy("kept"));
  ASSERT_TRUE(clipboard.copy(longest));
  const auto edition = clipboard.edition();
  EXPECT_FALSE(clipboard.copy(longest + 'x'));
  EXPECT_EQ(clipboard.edition(), edition);
  std::filesystem::create_directory(
      stage.runtimeFile(".clipboard." + std::to_string(::getpid()) + ".new"));
  EXPECT_FALSE(clipboard.copy("can't be written"));
  EXPECT_EQ(clipboard.edition(), edition);
}

}  // namespace
}  // namespace quorvane::tests
