// The stand-in's popup and its paste request, between processes.

#include <gtest/gtest.h>

#include <csignal>

#include "tests/support/DesktopStage.h"
#include "tools/checker/PopupList.h"

namespace quorvane::tests {
namespace {

TEST(CheckerProgram, ADigitChoosesAndThePasteKeysComeBackAsARestore) {
  const OwnFolder folder;
  const auto runtime = folder.path() / "r";
  const std::vector<std::string> variables{"QUORVANE_RUNTIME_DIR=" + runtime.string(),
                                           "QUORVANE_KEY_OFFSET=" + std::to_string(ownKeyOffset())};
  const auto run = [&](std::vector<std::string> arguments, std::string input = {}) {
    return RunningProgram(folder, {std::move(arguments), std::move(input), variables});
  };
  RunningProgram standIn = run({"checker", "--popup"});
  ASSERT_TRUE(eventually([&] { return announcementsIn(runtime) == 1; })) << standIn.errors();
  // Half a second behind another key a digit is the popup's.
  RunningProgram type = run({"type", "--no-checker", "--delay", "550"}, "teh 1 teh ");
  EXPECT_TRUE(eventually([&] { return checker::readPopupList(runtime).has_value(); }));
  EXPECT_TRUE(eventually([&] { return !std::filesystem::exists(runtime / "popup"); }));
  EXPECT_EQ(run({"checker", "--paste", std::to_string(type.pid())}).wait(), 0);
  EXPECT_EQ(type.wait(), 0) << type.errors();
  EXPECT_EQ(type.output(), "the  teh ");
  EXPECT_TRUE(std::filesystem::exists(runtime / "popup"));
  standIn.signal(SIGTERM);
  EXPECT_EQ(standIn.wait(), 0);
  EXPECT_FALSE(std::filesystem::exists(runtime / "popup"));
  // Bit 20; the command record may hold a later command by then.
  EXPECT_NE(standIn.errors().find(" bits 1048576"), std::string::npos) << standIn.errors();
}

}  // namespace
}  // namespace quorvane::tests
