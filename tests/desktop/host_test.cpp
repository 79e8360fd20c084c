// Folder, settings, log, run loop and the end of the process.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <fstream>

#include "tests/support/DesktopStage.h"

namespace quorvane::desktop {
namespace {

using std::chrono::milliseconds;

struct Pipe {
  Descriptor reader;
  Descriptor writer;
};

Pipe openPipe() {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0 || fcntl(ends[0], F_SETFL, O_NONBLOCK) != 0) {
    throw std::runtime_error("no pipe");
  }
  return {Descriptor(ends[0]), Descriptor(ends[1])};
}

/// What has arrived; empty where nothing has.
std::string readSome(const Descriptor& reader) {
  std::string text(1024 * 1024, '\0');
  const ssize_t size = read(reader.get(), text.data(), text.size());
  text.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
  return text;
}

TEST(DesktopRuntimeFolder, WhatCannotServeIsRefusedWithWhatToDo) {
  const tests::OwnFolder own;
  const auto refusal = [](const std::filesystem::path& path) -> std::string {
    try {
      const RuntimeFolder folder(path);
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return "nothing was thrown";
  };
  EXPECT_EQ(refusal(own.path() / "new"), "nothing was thrown");
  EXPECT_EQ(std::filesystem::status(own.path() / "new").permissions(),
            std::filesystem::perms::owner_all);
  EXPECT_NE(refusal(own.path() / std::string(90, 'x')).find("too long"), std::string::npos);
  EXPECT_NE(refusal(own.path() / "no" / "parent").find("QUORVANE_RUNTIME_DIR"), std::string::npos);
  chmod((own.path() / "new").c_str(), 0755);
  EXPECT_NE(refusal(own.path() / "new").find("chmod 700"), std::string::npos);
  chmod((own.path() / "new").c_str(), 0);
  EXPECT_NE(refusal(own.path() / "new").find("closed to yourself"), std::string::npos);
  std::ofstream(own.path() / "file") << "x";
  EXPECT_NE(refusal(own.path() / "file").find("no folder"), std::string::npos);
  std::filesystem::create_symlink(own.path(), own.path() / "link");
  EXPECT_NE(refusal(own.path() / "link").find("no folder"), std::string::npos);
}

TEST(DesktopSettings, OutliveTheHostAndABrokenFileIsTakenAsEmpty) {
  tests::DesktopStage stage;
  stage.platform().userDefaults.setBool(true, "verticalCandidate");
  stage.platform().userDefaults.setBool(true, "ShiftKeyToggle");
  stage.platform().userDefaults.setBool(false, "ShiftKeyToggle");
  auto& sources = stage.platform().textInputSources;
  EXPECT_EQ(sources.TISRegisterInputSource(stage.host().application().bundleURL()), noErr);
  const auto list = sources.TISCreateInputSourceList(true);
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(sources.TISEnableInputSource(*list[0]), noErr);
  EXPECT_EQ(sources.TISSelectInputSource(*list[0]), noErr);
  stage.closeHost();
  stage.openHost();
  EXPECT_TRUE(stage.platform().userDefaults.boolForKey("verticalCandidate"));
  EXPECT_FALSE(stage.platform().userDefaults.boolForKey("ShiftKeyToggle"));
  EXPECT_NE(stage.platform().textInputSources.TISCopyCurrentKeyboardInputSource(), nullptr);
  stage.closeHost();
  for (const auto& file :
       std::filesystem::directory_iterator(stage.configuration().configDirectory)) {
    std::ofstream(file.path()) << "[broken\n\xFF";
  }
  stage.openHost();
  EXPECT_FALSE(stage.platform().userDefaults.boolForKey("verticalCandidate"));
  EXPECT_TRUE(stage.platform().textInputSources.TISCreateInputSourceList(true).empty());
}

TEST(DesktopLog, GoesOutASecondAfterTheLastLineOrWhenFullOrAtTheEnd) {
  tests::DesktopStage stage;
  const auto [reader, writer] = openPipe();
  auto log = std::make_unique<LogSink>(writer.get(), g_main_context_default());
  log->writeLine("one");
  log->writeLine("two");
  stage.host().runLoop().runFor(milliseconds(700));
  EXPECT_EQ(readSome(reader), "");
  stage.host().runLoop().runFor(milliseconds(600));
  EXPECT_EQ(readSome(reader), "one\ntwo\n");
  const std::string line(999, 'x');
  for (std::size_t i = 0; i < LogSink::kBufferSize / 1000; ++i) log->writeLine(line);
  EXPECT_EQ(readSome(reader), "");
  log->writeLine(line);
  EXPECT_EQ(readSome(reader).size(), LogSink::kBufferSize / 1000 * 1000);
  log.reset();
  EXPECT_EQ(readSome(reader), line + "\n");
}

TEST(DesktopLog, AReaderThatHasStoppedReadingHoldsNobodyUp) {
  const auto [reader, writer] = openPipe();
  const auto start = std::chrono::steady_clock::now();
  BoundedWriter bounded(writer.get());
  for (int i = 0; i < 20; ++i) bounded.write(std::string(100'000, 'x'));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  EXPECT_GE(readSome(reader).size(), 4096U);
  bounded.write("back");
  EXPECT_EQ(readSome(reader), "back");
}

TEST(DesktopRunLoop, AHandlerThatThrowsEndsNothingAndItsOwnerEndsIt) {
  tests::DesktopStage stage;
  RunLoop& loop = stage.host().runLoop();
  int calls = 0;
  auto timer = loop.addTimer(milliseconds(1), [&]() -> bool {
    if (++calls == 3) loop.quit();
    throw std::runtime_error("planned");
  });
  loop.run();
  EXPECT_EQ(calls, 3);
  timer.reset();
  loop.runFor(milliseconds(20));
  EXPECT_EQ(calls, 3);
}

TEST(DesktopRunLoop, ATimerRepeatsUntilItsOwnerGoes) {
  tests::DesktopStage stage;
  RunLoop& loop = stage.host().runLoop();
  int calls = 0;
  std::unique_ptr<Registration> timer = loop.addTimer(milliseconds(20), milliseconds(1), [&] {
    if (++calls == 13) timer.reset();
  });
  const auto once = loop.addTimer(Seconds(0), Seconds(0), [&] { calls += 10; });
  loop.runFor(milliseconds(5));
  EXPECT_GE(calls, 10);
  loop.runFor(milliseconds(200));
  EXPECT_EQ(calls, 13);
}

TEST(DesktopRunLoop, TimersOfOneIntervalWakeAnIdleProcessOnce) {
  tests::DesktopStage stage;
  RunLoop& loop = stage.host().runLoop();
  std::array<int, 2> calls{};
  std::array<std::unique_ptr<Registration>, 2> timers;
  std::chrono::steady_clock::time_point begin;
  do {  // again where the machine is held up
    usleep(10'000);
    begin = std::chrono::steady_clock::now();
    for (std::size_t i = 0; i < timers.size(); ++i) {
      timers[i] = loop.addTimer(milliseconds(20), milliseconds(10), [&calls, i] { ++calls[i]; });
      usleep(1000);
    }
  } while (std::chrono::steady_clock::now() - begin > milliseconds(4));
  while (calls[0] < 10) {
    g_main_context_iteration(nullptr, TRUE);
    ASSERT_EQ(calls[0], calls[1]);
  }
}

TEST(DesktopRunLoop, WhatIsAlwaysReadyHoldsNeitherTimersNorOthers) {
  tests::DesktopStage stage;
  RunLoop& loop = stage.host().runLoop();
  const Pipe pipe = openPipe();
  ASSERT_EQ(write(pipe.writer.get(), "x", 1), 1);
  std::array<int, 3> calls{};
  const auto watchReady = [&](const Descriptor& descriptor, std::size_t i) {
    return loop.watch(descriptor.get(), i == 1 ? G_IO_OUT : G_IO_IN,
                      [&calls, i](GIOCondition) { ++calls[i]; });
  };
  const Descriptor file(
      open("/dev/null", O_RDONLY | O_CLOEXEC));  // a set of descriptors refuses it
  const auto reader = watchReady(pipe.reader, 0);
  const auto writer = watchReady(pipe.writer, 1);
  const auto third = watchReady(file, 2);
  const auto timer = loop.addTimer(milliseconds(20), Seconds(0), [&] { loop.quit(); });
  loop.run();
  for (const int count : calls) EXPECT_GT(count, 2);
}

TEST(DesktopRunLoop, WhatIsDelayedRunsOnceAlsoWhereItThrows) {
  tests::DesktopStage stage;
  RunLoop& loop = stage.host().runLoop();
  int calls = 0;
  loop.performAfterDelay(
      [&] {
        ++calls;
        throw std::runtime_error("planned");
      },
      milliseconds(1));
  loop.performAfterDelay([&] { ++calls; }, Seconds(-1));
  loop.performAfterDelay([&] { ++calls; }, Seconds(1e300));
  loop.runFor(milliseconds(30));
  EXPECT_EQ(calls, 2);
  loop.performAfterDelay([&] { ++calls; }, Seconds(0));
  loop.removeAllSources();
  loop.runFor(milliseconds(10));
  EXPECT_EQ(calls, 2);
}

TEST(DesktopApplication, ExitLeavesNothingBehindAndFlushesTheLog) {
  tests::DesktopStage stage;
  const auto [reader, writer] = openPipe();
  const pid_t child = fork();
  if (child == 0) {
    auto configuration = stage.configuration();
    configuration.logDescriptor = writer.get();
    field::FieldParts nowhere;
    DesktopHost host(configuration, nowhere.forPlatform());
    const Platform platform = host.platform();
    const auto owner = host.processRegistry().announce({"Q", "QVPX"_4cc, "APPL"_4cc, ""});
    const auto port = platform.messagePorts.CFMessagePortCreateLocal("port", nullptr);
    const bool made = platform.sharedMemory.shmget(880, 376, kIpcCreate | 0666) >= 0;
    platform.log.writeLine(made && port != nullptr ? "made" : "not made");
    platform.application.exit(-1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(WEXITSTATUS(status), 255);
  EXPECT_EQ(readSome(reader), "made\n");
  EXPECT_EQ(stage.platform().sharedMemory.shmget(880, 376, 0666), -1);
  EXPECT_FALSE(std::filesystem::exists(stage.runtimeFile("port")));
  EXPECT_FALSE(std::filesystem::exists(stage.runtimeFile(announcementFileName(child))));
}

}  // namespace
}  // namespace quorvane::desktop
