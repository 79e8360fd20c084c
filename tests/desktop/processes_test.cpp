// Announcements: what the dead leave, what strangers write, and the own one.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <fstream>
#include <optional>

#include "hosts/desktop/PacketSocket.h"
#include "hosts/desktop/StatusFile.h"
#include "hosts/desktop/WakeUp.h"
#include "tests/support/DesktopStage.h"

namespace quorvane::desktop {
namespace {

constexpr std::int32_t kNoPid = 4'194'304;  // above what the kernel gives

const Announcement kMain{"Quorvane", "QVPX"_4cc, "APPL"_4cc, "com.tallowmere.quorvane"};

class DesktopProcesses : public testing::Test {
 protected:
  void write(const std::string& name, const std::string& content) {
    std::ofstream(stage_.runtimeFile(name)) << content;
    stage_.turn();
  }
  bool exists(std::int32_t pid) {
    return std::filesystem::exists(stage_.runtimeFile(announcementFileName(pid)));
  }
  ProcessRegistry& registry() { return stage_.host().processRegistry(); }

  tests::DesktopStage stage_;
};

TEST_F(DesktopProcesses, ALivingOneIsWokenAndAKilledOneNoticedAndCleared) {
  tests::Child child([this] {
    std::ofstream(stage_.runtimeFile(announcementFileName(getpid())))
        << *formatAnnouncement({getpid(), kMain});
  });
  stage_.turn();
  ASSERT_NE(registry().find(child.pid()), nullptr);
  int wakeUps = 0;
  const WakeUps watch(stage_.host().runLoop(), registry().announcementOf(child.pid()),
                      [&wakeUps] { ++wakeUps; });
  stage_.platform().processManager.WakeUpProcess(serialNumberOf(child.pid()));
  stage_.turn();
  EXPECT_EQ(wakeUps, 1) << "whoever watches for it, in its place";
  kill(child.pid(), SIGKILL);
  EXPECT_TRUE(stage_.eventually([&] { return registry().find(child.pid()) == nullptr; }))
      << "also while nobody has waited for it";
  EXPECT_FALSE(exists(child.pid()));
}

TEST_F(DesktopProcesses, LeftoversAreClearedAndStrangeFilesIgnored) {
  stage_.closeHost();
  std::ofstream(stage_.runtimeFile(announcementFileName(kNoPid)))
      << *formatAnnouncement({kNoPid, kMain});
  stage_.openHost();
  EXPECT_FALSE(exists(kNoPid));
  const std::int32_t parent = getppid();
  write(announcementFileName(parent), *formatAnnouncement({parent + 1, kMain}));
  write("1.process", std::string(5000, 'x'));
  write("x.process", *formatAnnouncement({parent, kMain}));
  std::filesystem::create_directory(stage_.runtimeFile("2.process"));
  std::filesystem::create_symlink("/dev/zero", stage_.runtimeFile("3.process"));
  stage_.turn();
  EXPECT_EQ(registry().processes().size(), 1U);
}

TEST_F(DesktopProcesses, StrangersAreRefusedAndToldOf) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can play another user";
  constexpr uid_t kStranger = 12345;
  const auto file = [this](const std::string& name) { return stage_.runtimeFile(name); };
  const Descriptor lines(::open(file("log").c_str(), O_CREAT | O_WRONLY | O_APPEND, 0600));
  std::optional<tests::DesktopStage> stage([&](DesktopConfiguration& own) {
    own.runtimeDirectory = stage_.configuration().runtimeDirectory;
    own.logDescriptor = lines.get();
  });
  quorvane::MessagePorts& ports = stage->platform().messagePorts;
  const auto own = ports.CFMessagePortCreateLocal("own", nullptr);
  auto& loop = stage->host().runLoop();
  loop.CFRunLoopAddSource(*loop.CFRunLoopGetCurrent(), ports.CFMessagePortCreateRunLoopSource(own));
  ::chmod(file("").parent_path().parent_path().c_str(), 0711);
  for (const char* const opened : {"", "own"}) ASSERT_EQ(::chmod(file(opened).c_str(), 0777), 0);
  Descriptor server;
  const tests::Child stranger([&] {
    if (::seteuid(kStranger) != 0) _exit(1);
    server = listenAt(file("theirs"));
    connectTo(file("own"));
    std::ofstream(file(announcementFileName(getpid()))) << *formatAnnouncement({getpid(), kMain});
  });
  EXPECT_EQ(ports.CFMessagePortCreateRemote("theirs"), nullptr);
  stage->turn();
  EXPECT_EQ(stage->host().processRegistry().processes().size(), 1U);
  const StatusFile mine(file(""), getpid());
  const auto status = statusFileOf(file(""), getpid());
  ASSERT_TRUE(readStatusFile(status));
  EXPECT_EQ(::chown(status.c_str(), kStranger, kStranger), 0);
  EXPECT_FALSE(readStatusFile(status));
  stage.reset();
  const std::string log = tests::contentOf(file("log"));
  for (const char* const told : {"theirs: another user", "own: turned away", ".process: belongs"}) {
    EXPECT_NE(log.find(told), std::string::npos) << told << " in " << log;
  }
  EXPECT_EQ(::chown(file("").c_str(), kStranger, kStranger), 0);
  EXPECT_THROW(RuntimeFolder(stage_.configuration().runtimeDirectory), std::runtime_error);
}

TEST_F(DesktopProcesses, TheOwnAnnouncementStandsAsLongAsItsOwner) {
  auto owner = registry().announce(kMain);
  EXPECT_TRUE(exists(getpid()));
  owner.reset();
  EXPECT_FALSE(exists(getpid()));
  owner = registry().announce(kMain);
  stage_.closeHost();
  EXPECT_FALSE(exists(getpid()));
  owner.reset();
}

}  // namespace
}  // namespace quorvane::desktop
