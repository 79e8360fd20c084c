// The stand-in's start beside another one, as a person may start two.

#include <gtest/gtest.h>
#include <sys/shm.h>

#include <csignal>

#include "tests/desktop/DesktopStage.h"

namespace quorvane::tests {
namespace {

std::size_t announcementsIn(const std::filesystem::path& folder) {
  std::error_code error;
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (entry.path().extension() == ".process") ++count;
  }
  return count;
}

bool wasRefused(const RunningProgram& program) {
  return program.errors().find("running already") != std::string::npos;
}

/// Those that a failed test has killed leave their segments behind.
struct RemovedSegments {
  ~RemovedSegments() {
    for (const std::uint32_t key : {880U, 893U, 896U, 897U, 899U}) {
      ::shmctl(::shmget(static_cast<key_t>(key + keyOffset), 0, 0), IPC_RMID, nullptr);
    }
  }
  std::uint32_t keyOffset = ownKeyOffset();
};

TEST(CheckerStart, OfTwoAtOnceOneWorksAndTheOtherLeavesItsSegmentsAlone) {
  const OwnFolder folder;
  const RemovedSegments segments;
  const std::filesystem::path runtime = folder.path() / "r";
  const std::vector<std::string> variables{
      "QUORVANE_RUNTIME_DIR=" + runtime.string(),
      "QUORVANE_KEY_OFFSET=" + std::to_string(segments.keyOffset)};
  for (int round = 0; round < 3; ++round) {
    const Start start{.arguments = {"checker"}, .variables = variables};
    RunningProgram one(folder, start);
    RunningProgram two(folder, start);
    ASSERT_TRUE(eventually([&] { return wasRefused(one) || wasRefused(two); }));
    ASSERT_TRUE(eventually([&] { return announcementsIn(runtime) == 1; }));
    RunningProgram type(
        folder,
        {.arguments = {"type", "--no-checker"}, .input = "teh end ", .variables = variables});
    EXPECT_EQ(type.wait(), 0);
    EXPECT_EQ(type.output(), "the end ");
    RunningProgram& loser = wasRefused(one) ? one : two;
    RunningProgram& winner = &loser == &one ? two : one;
    EXPECT_EQ(loser.wait(), 1);
    winner.signal(SIGTERM);
    EXPECT_EQ(winner.wait(), 0);
  }
}

}  // namespace
}  // namespace quorvane::tests
