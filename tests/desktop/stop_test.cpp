// The family as real processes: companions, and the end of all.

#include <gtest/gtest.h>
#include <sys/ipc.h>
#include <sys/shm.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <fstream>
#include <random>
#include <regex>
#include <string_view>

#include "hosts/desktop/Announcement.h"
#include "hosts/desktop/StatusFile.h"
#include "tests/support/DesktopStage.h"

namespace quorvane::tests {
namespace {

class Family : public testing::Test {
 protected:
  RunningProgram run(std::vector<std::string> arguments, std::string input = {}) {
    return {folder_, {std::move(arguments), std::move(input), {key_}}};
  }

  bool runs(std::string_view who) const { return announced(runtime_, who) != 0; }

  OwnFolder folder_;
  const std::uint32_t offset_ = ownKeyOffset();
  const std::string key_ = "QUORVANE_KEY_OFFSET=" + std::to_string(offset_);
  const std::filesystem::path runtime_ = folder_.usualRuntimeFolder();
};

TEST_F(Family, StopEndsThemAllAndLeavesNothing) {
  RunningProgram asked = run({"companion", "pencil-menu"});
  ASSERT_TRUE(eventually([this] { return runs("QVKS"); }));
  for (const FourCharCode message : {"oMen"_4cc, "gMen"_4cc}) {
    sendTo(runtime_ / "Q7T2M4K9W1.com.tallowmere.QorvMenuletPortServer", message);
  }
  EXPECT_EQ(asked.wait(), 0) << "the second ends it";
  RunningProgram checker = run({"checker"});
  RunningProgram server = run({"companion", "server"});
  RunningProgram pencil = run({"companion", "pencil-menu"});
  RunningProgram type(folder_, {{"type", "--delay", "60000"}, "ab", {}});
  ASSERT_TRUE(eventually([&] { return runs("QVPX") && runs("QVUI") && runs("QVKS"); }));
  const auto own = runtime_ / ("type-" + std::to_string(type.pid()));
  ASSERT_TRUE(eventually([&] { return announcementsIn(own) >= 2; }));
  RunningProgram second = run({"companion", "server"});
  EXPECT_EQ(second.wait(), 1) << "one runs";
  // A leftover whose process id somebody else has by now, and a process that won't end.
  const Child bystander([] {});
  const auto leftover = runtime_ / (std::to_string(bystander.pid()) + ".process");
  std::ofstream(leftover) << *desktop::formatAnnouncement(
      {bystander.pid(), {"x", "????"_4cc, "APPL"_4cc, "x"}});
  std::filesystem::last_write_time(
      leftover, std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
  server.signal(SIGSTOP);
  RunningProgram stop = run({"stop"});
  EXPECT_EQ(stop.wait(), 0) << stop.errors();
  EXPECT_EQ(checker.wait(), 0);
  EXPECT_EQ(pencil.wait(), 0);
  EXPECT_EQ(server.wait(), 128 + SIGKILL);
  EXPECT_EQ(type.wait(), 128 + SIGTERM);
  EXPECT_FALSE(std::filesystem::exists(runtime_));
  EXPECT_EQ(::shmget(static_cast<key_t>(880 + offset_), 0, 0), -1);
  EXPECT_EQ(::kill(bystander.pid(), 0), 0);
  RunningProgram again = run({"stop"});
  EXPECT_EQ(again.wait(), 0);
  EXPECT_EQ(again.output(), "nothing was running\n");
}

/// However often somebody looks, and in whatever order and whenever the siblings are killed.
TEST_F(Family, ATextStaysWholeWhoeverLooksAndWhoeverDies) {
  std::random_device random;
  std::string text;
  for (int i = 0; i < 120; ++i) text += "teh ";
  std::array<std::string_view, 3> order{"QVKS", "QVPX", "QVUI"};
  do {
    RunningProgram type(
        folder_,
        {{"type", "--delay", "5"}, text, {"QUORVANE_RUNTIME_DIR=" + runtime_.string(), key_}});
    ASSERT_TRUE(eventually([&] {
      return announcementsIn(runtime_) == 2 && runs("QVKS") && runs("QVPX") && runs("QVUI");
    })) << "a start brings all, whoever has died before: "
        << type.errors();
    RunningProgram look = run({"status", "--json"});
    const auto status = desktop::statusFileOf(runtime_, type.pid());
    for (const std::string_view victim : order) {
      for (auto times = random() % 4000; times > 0; --times) {
        ASSERT_TRUE(desktop::readStatusFile(status) || !std::filesystem::exists(status));
      }
      const pid_t pid = announced(runtime_, victim);
      ASSERT_TRUE(pid > 0 && ::kill(pid, SIGKILL) == 0) << victim;
      ASSERT_TRUE(eventually([&] { return !runs(victim); })) << victim;
    }
    sendToInputMethod(runtime_, type.pid(), "GtAb"_4cc);
    sendToInputMethod(runtime_, type.pid(), "oMen"_4cc);
    EXPECT_TRUE(eventually([&] { return runs("QVPX") && runs("QVKS"); }));
    EXPECT_FALSE(runs("QVUI")) << "only a start looks for it";
    EXPECT_EQ(look.wait(), 0);
    EXPECT_NE(look.output().find("\"process\": " + std::to_string(type.pid())), std::string::npos);
    EXPECT_EQ(type.wait(), 0) << type.errors();
    EXPECT_EQ(std::regex_replace(type.output(), std::regex("the "), "teh "), text);
  } while (std::ranges::next_permutation(order).found && !HasFailure());
}

TEST_F(Family, StopRemovesNothingThatBearsAForeignName) {
  const desktop::RuntimeFolder folder(runtime_);
  for (const char* const name : {"data-1", "data-mine", "popup"}) {
    std::filesystem::create_directory(runtime_ / name);
  }
  for (const char* const name : {".profile", ".mine.1.new", ".1.process.1.new", "data-1/x"}) {
    EXPECT_TRUE(std::ofstream(runtime_ / name).is_open()) << name;
  }
  EXPECT_EQ(run({"stop"}).wait(), 1);
  for (const char* const name : {"data-mine", "popup", ".profile", ".mine.1.new"}) {
    EXPECT_TRUE(std::filesystem::remove(runtime_ / name)) << name;
  }
  EXPECT_TRUE(std::filesystem::remove(runtime_)) << "the family's is gone";
}

}  // namespace
}  // namespace quorvane::tests
