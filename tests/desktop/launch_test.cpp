// Launching: what is started, what isn't, and how what ends is met.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/wait.h>

#include <array>
#include <csignal>
#include <fstream>
#include <thread>

#include "hosts/desktop/ProcessLiveness.h"
#include "tests/support/DesktopStage.h"
#include "tools/applications/ApplicationFolder.h"

namespace quorvane::desktop {
namespace {

constexpr Seconds kWait{30};

class Launch : public testing::Test {
 protected:
  /// A main application that a shell plays; $1 is a file of the test's.
  void put(const std::string& script) {
    writeApplicationPackage({application_, "QVPX"_4cc, {"/bin/sh", {"-c", script, "sh", said_}}});
  }
  OSStatus launch(tests::DesktopStage& stage) {
    FSRef ref;
    const Platform platform = stage.platform();
    if (!platform.fileManager.CFURLGetFSRef(application_, ref)) return fnfErr;
    return platform.launchServices.LSOpenFromRefSpec(ref, 0);
  }
  OSStatus wait(Seconds time = kWait) {
    return stage_.platform().launchServices.ReceiveNextEvent(kEventClassApplication,
                                                             kEventAppLaunchNotification, time);
  }
  auto running() { return stage_.host().processRegistry().findSignature("QVPX"_4cc); }
  std::string said() const { return tests::contentOf(said_); }

  static constexpr const char* kAnnounce =
      "echo started >>\"$1\"; f=\"$QUORVANE_RUNTIME_DIR/$$.process\"; printf "
      "'quorvane-process 1\\npid=%d\\nserial=1:%d\\nname=Quorvane\\nsignature=QVPX\\ntype=APPL\\n"
      "bundle=com.tallowmere.quorvane\\n' $$ $$ >\"$f.new\"; mv \"$f.new\" \"$f\"; "
      "exec sleep 60";

  tests::DesktopStage stage_{[](DesktopConfiguration& own) { own.endsWhatItLaunches = true; }};
  const std::filesystem::path application_ =
      applications::mainApplicationIn(stage_.configuration().applicationsDirectory);
  const std::function<void(DesktopConfiguration&)> withTheSameFolder =
      [this](DesktopConfiguration& own) { own.runtimeDirectory = stage_.runtimeFile(""); };
  const std::string said_ = stage_.configuration().runtimeDirectory.parent_path() / "said";
};

TEST_F(Launch, OneThatRunsIsTheOnlyOneAndOneThatIsKilledComesAgain) {
  put(kAnnounce);
  tests::DesktopStage other{withTheSameFolder};
  for (const std::string all : {"started\n", "started\nstarted\n"}) {
    EXPECT_EQ(launch(stage_), noErr);
    EXPECT_EQ(launch(other), noErr) << "while it starts";
    EXPECT_EQ(wait(), noErr);
    EXPECT_EQ(launch(stage_), noErr);
    EXPECT_EQ(wait(), noErr) << "of one that runs it comes at once";
    EXPECT_EQ(wait(), eventLoopTimedOutErr) << "and once";
    EXPECT_EQ(launch(other), noErr);
    EXPECT_EQ(said(), all);
    ASSERT_NE(running(), nullptr);
    EXPECT_EQ(kill(running()->pid, SIGKILL), 0);
    EXPECT_TRUE(stage_.eventually([this] { return running() == nullptr; }));
  }
}

TEST_F(Launch, OfSeveralThatLaunchAtOnceOneStartsIt) {
  put(kAnnounce);
  const auto begins = std::chrono::steady_clock::now() + std::chrono::milliseconds(300);
  std::array<pid_t, 4> launchers{};
  for (pid_t& launcher : launchers) {
    launcher = fork();
    if (launcher != 0) continue;
    tests::DesktopStage own{withTheSameFolder};
    std::this_thread::sleep_until(begins);
    _exit(launch(own) == noErr ? 0 : 1);
  }
  for (const pid_t launcher : launchers) {
    int status = -1;
    waitpid(launcher, &status, 0);
    EXPECT_EQ(status, 0);
  }
  ASSERT_TRUE(stage_.eventually([this] { return running() != nullptr; }));
  EXPECT_EQ(said(), "started\n");
  kill(running()->pid, SIGTERM);
}

/// Neither within a key, nor while signals come all the time, nor where the folder is locked.
TEST_F(Launch, OneThatNeverAnnouncesItselfIsStartedOnceAndHoldsNothingUpForLong) {
  struct sigaction quiet {};
  quiet.sa_handler = [](int) {};
  sigaction(SIGALRM, &quiet, nullptr);
  const itimerval often{{0, 5'000}, {0, 5'000}};
  setitimer(ITIMER_REAL, &often, nullptr);
  put("echo started >>\"$1\"; exec sleep 60");
  stage_.host().launchServices().withinKey.isWithin = [] { return true; };
  const auto begins = std::chrono::steady_clock::now();
  EXPECT_EQ(launch(stage_), noErr);
  EXPECT_EQ(wait(), eventLoopTimedOutErr);
  EXPECT_GE(std::chrono::steady_clock::now() - begins, Seconds(2));
  stage_.host().launchServices().withinKey.isWithin = nullptr;
  for (const auto& entry : std::filesystem::directory_iterator(stage_.runtimeFile(""))) {
    if (!entry.path().filename().string().starts_with(".starts-")) continue;
    std::filesystem::remove(entry);
    std::filesystem::create_directory(entry);  // it can't be read or written now
    break;
  }
  EXPECT_EQ(launch(stage_), noErr);
  EXPECT_EQ(wait(), eventLoopTimedOutErr) << "it has been awaited";
  const Descriptor lock = RuntimeFolder(stage_.configuration().runtimeDirectory).lock();
  EXPECT_EQ(launch(stage_), kLSUnknownErr);
  EXPECT_NE(stage_.host().supervisor().trouble().find("holds .lock"), std::string::npos);
  EXPECT_LT(std::chrono::steady_clock::now() - begins, kWait / 2);
  EXPECT_EQ(said(), "started\n");
  setitimer(ITIMER_REAL, nullptr, nullptr);
}

TEST_F(Launch, ACrashLoopEndsAndIsSaidWithWhatTheProgramPrinted) {
  put("echo started >>\"$1\"; printf 'out\\302\\233 of luck'; exit 3");
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(launch(stage_), noErr);
    EXPECT_EQ(wait(), eventLoopTimedOutErr) << "at once";
    const std::string& trouble = stage_.host().supervisor().trouble();
    EXPECT_NE(trouble.find("exit code 3"), std::string::npos) << trouble;
    EXPECT_NE(trouble.find("out? of luck"), std::string::npos) << trouble;
  }
  EXPECT_EQ(launch(stage_), kLSUnknownErr);
  EXPECT_NE(stage_.host().supervisor().trouble().find("three times"), std::string::npos);
  EXPECT_EQ(said(), "started\nstarted\nstarted\n");
}

TEST_F(Launch, WhatIsNoApplicationIsSaidAndNothingStarts) {
  put("exit 0");
  for (const char* const content :
       {"", "quorvane-launcher 1\n/no/such\n", "quorvane-launcher 1\n/tmp\n"}) {
    std::ofstream(application_ / "Contents/launcher") << content;
    EXPECT_EQ(launch(stage_), kLSUnknownErr) << content;
    EXPECT_NE(stage_.host().supervisor().trouble(), "") << content;
  }
  for (const char* const path : {"", "Quorvane.app", "/no/such.app"}) {
    EXPECT_FALSE(stage_.platform().workspace.launchApplication(path)) << path;
  }
  put("echo started >>\"$1\"");
  for (const char* const file : {"", "Contents/launcher"}) {
    ::chmod((application_ / file).c_str(), 0777);
    EXPECT_EQ(launch(stage_), kLSUnknownErr) << file;
    ::chmod((application_ / file).c_str(), 0755);
  }
  EXPECT_EQ(said(), "");
}

TEST_F(Launch, EndsWithItsOwnerEvenWhereItWillNot) {
  put("trap '' TERM; echo $$ >\"$1\"; while :; do sleep 1; done");
  EXPECT_EQ(launch(stage_), noErr);
  EXPECT_EQ(wait(Seconds(0.2)), eventLoopTimedOutErr);
  ASSERT_TRUE(stage_.eventually([this] { return said().ends_with('\n'); }));
  const int pid = std::stoi(said());
  EXPECT_TRUE(isRunning(pid));
  stage_.closeHost();
  EXPECT_FALSE(isRunning(pid));
}

}  // namespace
}  // namespace quorvane::desktop
