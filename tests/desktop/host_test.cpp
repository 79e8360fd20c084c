// Folder, environment, settings, log, run loop and the end of the process.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <fstream>
#include <map>
#include <sstream>

#include "tests/desktop/DesktopStage.h"

namespace quorvane::desktop {
namespace {

using std::chrono::milliseconds;

std::string messageOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "nothing was thrown";
}

TEST(DesktopRuntimeFolder, WhatCannotServeIsRefusedWithWhatToDo) {
  const tests::OwnFolder own;
  const auto refusal = [](const std::filesystem::path& path) {
    return messageOf([&] { const RuntimeFolder folder(path); });
  };
  EXPECT_EQ(refusal(own.path() / "new"), "nothing was thrown");
  EXPECT_EQ(std::filesystem::status(own.path() / "new").permissions(),
            std::filesystem::perms::owner_all);
  EXPECT_NE(refusal(own.path() / std::string(90, 'x')).find("too long"), std::string::npos);
  EXPECT_NE(refusal(own.path() / "no" / "parent").find("QUORVANE_RUNTIME_DIR"), std::string::npos);
  chmod((own.path() / "new").c_str(), 0755);
  EXPECT_NE(refusal(own.path() / "new").find("chmod 700"), std::string::npos);
  std::ofstream(own.path() / "file") << "x";
  EXPECT_NE(refusal(own.path() / "file").find("no folder"), std::string::npos);
  std::filesystem::create_symlink(own.path(), own.path() / "link");
  EXPECT_NE(refusal(own.path() / "link").find("no folder"), std::string::npos);
}

TEST(DesktopConfiguration, IsReadFromTheEnvironment) {
  const auto read = [](std::map<std::string, std::string> variables) {
    variables.emplace("HOME", "/home/me");
    return DesktopConfiguration::fromEnvironment([&](const char* name) -> const char* {
      const auto found = variables.find(name);
      return found == variables.end() ? nullptr : found->second.c_str();
    });
  };
  EXPECT_EQ(read({{"QUORVANE_KEY_OFFSET", "0x10000"}}).keyOffset, 65536U);
  EXPECT_EQ(read({{"QUORVANE_RUNTIME_DIR", "/r"}, {"XDG_RUNTIME_DIR", "/x"}}).runtimeDirectory,
            "/r");
  EXPECT_EQ(read({{"XDG_RUNTIME_DIR", "/x"}}).runtimeDirectory, "/x/quorvane");
  EXPECT_EQ(read({{"TMPDIR", "/t"}}).runtimeDirectory, "/t/quorvane-" + std::to_string(geteuid()));
  EXPECT_EQ(read({}).configDirectory, "/home/me/.config/quorvane");
  EXPECT_EQ(read({{"XDG_CONFIG_HOME", "relative"}}).configDirectory, "/home/me/.config/quorvane");
  EXPECT_EQ(read({{"QUORVANE_SCREEN", "800x600"}}).screen, (NSRect{0, 0, 800, 600}));
  for (const std::string bad : {"-1", "12a", "4294967296", "0x"}) {
    EXPECT_NE(messageOf([&] {
                read({{"QUORVANE_KEY_OFFSET", bad}});
              }).find(bad),
              std::string::npos);
  }
  EXPECT_NE(messageOf([&] {
              read({{"QUORVANE_SCREEN", "x600"}});
            }).find("x600"),
            std::string::npos);
}

TEST(DesktopSettings, OutliveTheHostAndABrokenFileIsTakenAsEmpty) {
  tests::DesktopStage stage;
  stage.platform().userDefaults.setBool(true, "verticalCandidate");
  auto& sources = stage.platform().textInputSources;
  EXPECT_NE(sources.TISRegisterInputSource("/no/such/program"), noErr);
  EXPECT_EQ(sources.TISRegisterInputSource(stage.host().application().bundleURL()), noErr);
  const auto list = sources.TISCreateInputSourceList(true);
  ASSERT_EQ(list.size(), 1U);
  EXPECT_TRUE(sources.TISCreateInputSourceList(false).empty());
  EXPECT_NE(sources.TISSelectInputSource(*list[0]), noErr);
  EXPECT_EQ(sources.TISEnableInputSource(*list[0]), noErr);
  EXPECT_EQ(sources.TISSelectInputSource(*list[0]), noErr);
  stage.closeHost();
  stage.openHost();
  EXPECT_TRUE(stage.platform().userDefaults.boolForKey("verticalCandidate"));
  auto& again = stage.platform().textInputSources;
  ASSERT_NE(again.TISCopyCurrentKeyboardInputSource(), nullptr);
  EXPECT_EQ(again.TISCopyCurrentKeyboardInputSource()->kTISPropertyInputSourceID,
            "com.tallowmere.inputmethod.Quorvane");
  EXPECT_EQ(again.TISDisableInputSource(*list[0]), noErr);
  EXPECT_EQ(again.TISCopyCurrentKeyboardInputSource(), nullptr);
  stage.closeHost();
  for (const auto& file :
       std::filesystem::directory_iterator(stage.configuration().configDirectory)) {
    std::ofstream(file.path()) << "[broken\n\xFF";
  }
  stage.openHost();
  EXPECT_FALSE(stage.platform().userDefaults.boolForKey("verticalCandidate"));
  stage.platform().userDefaults.setBool(true, "ShiftKeyToggle");
  EXPECT_TRUE(stage.platform().textInputSources.TISCreateInputSourceList(true).empty());
}

TEST(DesktopLog, GoesOutASecondAfterTheLastLineOrWhenFullOrAtTheEnd) {
  tests::DesktopStage stage;
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_NONBLOCK), 0);
  const Descriptor reader(ends[0]);
  const Descriptor writer(ends[1]);
  const auto arrived = [&] {
    std::string text(2 * LogSink::kBufferSize, '\0');
    const ssize_t size = read(reader.get(), text.data(), text.size());
    text.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    return text;
  };
  auto log = std::make_unique<LogSink>(writer.get(), g_main_context_default());
  log->writeLine("one");
  log->writeLine("two");
  stage.host().runLoop().runFor(milliseconds(700));
  EXPECT_EQ(arrived(), "");
  stage.host().runLoop().runFor(milliseconds(600));
  EXPECT_EQ(arrived(), "one\ntwo\n");
  const std::string line(999, 'x');
  for (std::size_t i = 0; i < LogSink::kBufferSize / 1000; ++i) log->writeLine(line);
  EXPECT_EQ(arrived(), "");
  log->writeLine(line);
  EXPECT_EQ(arrived().size(), LogSink::kBufferSize / 1000 * 1000);
  log.reset();
  EXPECT_EQ(arrived(), line + "\n");
}

TEST(DesktopLog, AReaderThatHasStoppedReadingHoldsNobodyUp) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const Descriptor reader(ends[0]);
  const Descriptor writer(ends[1]);
  const auto start = std::chrono::steady_clock::now();
  BoundedWriter bounded(writer.get());
  for (int i = 0; i < 20; ++i) bounded.write(std::string(100'000, 'x'));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  std::string text(1024 * 1024, '\0');
  EXPECT_GE(read(reader.get(), text.data(), text.size()), 4096);
  bounded.write("back");
  EXPECT_EQ(read(reader.get(), text.data(), text.size()), 4);
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
  const auto always = loop.watch(STDERR_FILENO, G_IO_OUT, [](auto) {});
  loop.runPending();
}

TEST(DesktopApplication, ExitLeavesNothingBehindAndFlushesTheLog) {
  tests::DesktopStage stage;
  const auto file = stage.configuration().configDirectory;
  const pid_t child = fork();
  if (child == 0) {
    auto configuration = stage.configuration();
    std::filesystem::create_directories(configuration.configDirectory);
    configuration.logDescriptor =
        open((file / "log").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    tests::NoEventPosting posting;
    DesktopHost host(configuration, posting);
    const Platform platform = host.platform();
    const auto owner = host.processRegistry().announce({"Q", "QVPX"_4cc, "APPL"_4cc, ""});
    const auto port = platform.messagePorts.CFMessagePortCreateLocal("port", nullptr);
    const bool made = platform.sharedMemory.shmget(880, 376, kIpcCreate | 0666) >= 0;
    platform.log.writeLine(made && port != nullptr ? "made" : "failed");
    platform.application.exit(-1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(WEXITSTATUS(status), 255);
  std::ostringstream log;
  log << std::ifstream(file / "log").rdbuf();
  EXPECT_EQ(log.str(), "made\n");
  EXPECT_EQ(stage.platform().sharedMemory.shmget(880, 376, 0666), -1);
  EXPECT_FALSE(std::filesystem::exists(stage.runtimeFile("port")));
  EXPECT_FALSE(std::filesystem::exists(stage.runtimeFile(announcementFileName(child))));
}

}  // namespace
}  // namespace quorvane::desktop
