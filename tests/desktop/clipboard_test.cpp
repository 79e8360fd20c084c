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

TEST_F(ClipboardTest, ACommandTakesItsOwnCopyAndNeverAPersons) {
  EXPECT_TRUE(clipboard.copyForCommand("of an empty clipboard"));
  EXPECT_EQ(clipboard.takeCommandsCopy(), "of an empty clipboard");
  EXPECT_EQ(clipboard.text(), std::nullopt);
  clipboard.copy("mine");
  EXPECT_EQ(clipboard.takeCommandsCopy(), std::nullopt);
  clipboard.copyForCommand("given up");
  clipboard.copyForCommand("its own");
  EXPECT_EQ(clipboard.takeCommandsCopy(), "its own");
  holds("mine");
  clipboard.copyForCommand("given up");
  clipboard.copyForCommand("");
  EXPECT_EQ(clipboard.takeCommandsCopy(), std::nullopt) << "nothing was selected";
  holds("mine");
  clipboard.copyForCommand("its own");
  clipboard.copy("mine, newer");
  EXPECT_EQ(clipboard.takeCommandsCopy(), std::nullopt);
  holds("mine, newer");
  struct stat status {};
  ASSERT_EQ(::stat(stage.runtimeFile("clipboard").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600U);
}

TEST_F(ClipboardTest, ALoanLiesBelowWhatIsCopiedMeanwhile) {
  clipboard.endLoan();
  clipboard.copy("mine");
  clipboard.endLoan();
  holds("mine");
  clipboard.lend("to be pasted");
  EXPECT_EQ(clipboard.takeCommandsCopy(), std::nullopt);
  clipboard.copyForCommand("its own");
  clipboard.endLoan();
  EXPECT_EQ(clipboard.takeCommandsCopy(), "its own");
  holds("mine");
  clipboard.lend("to be pasted");
  clipboard.lend("to be pasted, too");
  holds("to be pasted, too");
  clipboard.copy("mine, newer");
  clipboard.endLoan();
  holds("mine, newer");
  EXPECT_FALSE(std::filesystem::exists(stage.runtimeFile("clipboard.kept")));
}

TEST_F(ClipboardTest, APasteTakesWhatWasLentForItHoweverLate) {
  clipboard.copy("mine");
  clipboard.lend("to be pasted");
  clipboard.endLoan();
  EXPECT_EQ(clipboard.takeLent(), "to be pasted");
  EXPECT_EQ(clipboard.takeLent(), "mine") << "of somebody who doesn't lend";
  clipboard.lend("to be pasted, too");
  EXPECT_EQ(clipboard.takeLent(), "to be pasted, too");
  holds("mine");
  clipboard.lend("never pasted");
  clipboard.copyForCommand("its own");
  EXPECT_EQ(clipboard.takeLent(), "its own");
}

TEST_F(ClipboardTest, StaysWhereATextIsTooLongOrCantBeWritten) {
  const std::string longest(desktop::kClipboardLimit, 'x');
  ASSERT_TRUE(clipboard.copy(longest));
  EXPECT_FALSE(clipboard.copy(longest + 'x'));
  EXPECT_FALSE(clipboard.copyForCommand(longest + 'x'));
  EXPECT_EQ(clipboard.takeCommandsCopy(), std::nullopt);
  holds(longest);
  ASSERT_TRUE(clipboard.copy("kept"));
  std::filesystem::create_directory(
      stage.runtimeFile(".clipboard." + std::to_string(::getpid()) + ".new"));
  EXPECT_FALSE(clipboard.copy("can't be written"));
  EXPECT_FALSE(clipboard.lend("can't be written"));
  EXPECT_FALSE(clipboard.copyForCommand("can't be written"));
  EXPECT_EQ(clipboard.takeCommandsCopy(), std::nullopt);
  holds("kept");
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
    clipboard.copyForCommand("of the client");
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
    EXPECT_TRUE(loan.giveBack()) << "a check won't come";
    ASSERT_TRUE(loan.lend("to be pasted"));
    tool.put(checker::At::ClipState, 0);
    EXPECT_FALSE(loan.giveBack()) << "the paste has come, and a check may";
  }
}

}  // namespace
}  // namespace quorvane::tests
