#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "hosts/desktop/ClipboardFile.h"
#include "hosts/memory/MemoryClock.h"
#include "tests/support/DesktopStage.h"
#include "tools/checker/ClipboardLoan.h"

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

TEST_F(ClipboardTest, ALoanEndsOnceTheClientHasPasted) {
  struct Row {
    std::uint32_t pressedAfter;  ///< seconds; 0: never
    std::uint64_t over;
    const char* copied;  ///< by somebody, meanwhile
    const char* afterwards;
  };
  std::array<std::uint32_t, checker::kToolRecordSize / 4> words{};
  const checker::ToolRecord tool(words);
  Journal journal;
  for (const Row& row :
       {Row{1, 4, nullptr, "mine"}, Row{0, 10, nullptr, "mine"}, Row{1, 4, "another", "another"}}) {
    memory::MemoryClock clock(journal);
    clock.step = 0;
    checker::ClipboardLoan loan(tool, clipboard, clock);
    clipboard.copy("mine");
    clipboard.copy("of the client");
    EXPECT_EQ(loan.takeCopied(), "of the client");
    holds("mine");
    ASSERT_TRUE(loan.lend("to be pasted"));
    for (std::uint64_t second = 0; second <= row.over; ++second) {
      holds("to be pasted");
      if (second == row.pressedAfter && second > 0) tool.put(checker::At::ClipState, 2);
      EXPECT_FALSE(loan.poll()) << second;
      clock.advance(1'000'000'000);
    }
    if (row.copied != nullptr) clipboard.copy(row.copied);
    clock.advance(1);
    EXPECT_TRUE(loan.poll());
    holds(row.afterwards);
    EXPECT_EQ(tool.get(checker::At::ClipState), 0U);
  }
  std::filesystem::last_write_time(
      stage.runtimeFile("clipboard"),
      std::filesystem::file_time_type::clock::now() - std::chrono::seconds(6));
  memory::MemoryClock clock(journal);
  EXPECT_EQ(checker::ClipboardLoan(tool, clipboard, clock).takeCopied(), std::nullopt);
}

}  // namespace
}  // namespace quorvane::tests
