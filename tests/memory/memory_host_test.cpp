// The memory host where tests lean on it most: its journal, the moment at which the world changes,
// memory seen from two sides, nested waits, notifications and the scripted main application.

#include "hosts/memory/MemoryHost.h"

#include <gtest/gtest.h>

#include <cstring>

namespace quorvane::memory {
namespace {

using Lines = std::vector<std::string>;

constexpr std::string_view kOwnPort = "Q7T2M4K9W1.com.tallowmere.QorvInPortServer08192";

/// Serves the input method's port, keeping it alive by the run loop alone.
void serveOwnPort(MemoryHost& host, CFMessagePortCallBack callback) {
  const auto port = host.messagePorts.CFMessagePortCreateLocal(kOwnPort, std::move(callback));
  host.messagePorts.CFRunLoopAddSource(*host.messagePorts.CFRunLoopGetCurrent(),
                                       host.messagePorts.CFMessagePortCreateRunLoopSource(port));
}

TEST(MemoryJournal, RecordsCallsInOrderWithResults) {
  MemoryHost host;
  host.mainApplication.launch();
  const int id = host.sharedMemory.shmget(880, 376, 0666);
  host.sharedMemory.shmget(77, 8, 0);
  host.clock.mach_absolute_time();
  host.clock.mach_absolute_time();
  host.processes.WakeUpProcess(host.mainApplication.psn());
  host.eventPosting.IOHIDPostEvent(1, NX_FLAGSCHANGED, {}, 2, 0x20000, 0);
  field::Document& document = host.text.addDocument();
  document.insertText(u"abc", {0, 0});
  EXPECT_EQ(host.journal.take(),
            (Lines{"shmget 880 376 0666 -> " + std::to_string(id), "shmget 77 8 0 -> -1",
                   "mach_absolute_time x2", "WakeUpProcess 1 8194",
                   "IOHIDPostEvent flagsChanged 0x20000", "insertText \"abc\" {0,0}"}));
  EXPECT_EQ(host.journal.calls(), 7U);
}

TEST(MemoryJournal, KeepsTheLastLinesAndCountsWithoutRecording) {
  MemoryJournal journal;
  journal.setLimit(3);
  const std::size_t first = journal.call("first");
  for (int i = 0; i < 3; ++i) journal.call("call ", i);
  journal.result(first, 9);
  EXPECT_EQ(journal.lines(), (Lines{"call 0", "call 1", "call 2"}));
  journal.setRecording(false);
  journal.result(journal.call("unseen"), 1);
  journal.repeated("unseen");
  EXPECT_EQ(journal.lines().size(), 3U);
  EXPECT_EQ(journal.calls(), 6U);
}

TEST(MemoryHost, MainApplicationVanishesJustBeforeTheNthCall) {
  for (const std::uint64_t n : {1U, 2U, 3U, 4U}) {
    MemoryHost host;
    host.mainApplication.launch(Notice::Missed);
    host.journal.beforeCall(n, [&] { host.mainApplication.vanish(); });
    const int id = host.sharedMemory.shmget(880, 376, 0666);
    EXPECT_EQ(id == -1, n == 1);
    void* const address = host.sharedMemory.shmat(id, nullptr, 0);
    EXPECT_EQ(address == kShmFailed, n <= 2);
    const auto remote =
        host.messagePorts.CFMessagePortCreateRemote(MemoryMainApplication::kServerPort);
    EXPECT_EQ(remote == nullptr, n <= 3);
    if (n <= 2) continue;
    std::memset(address, 0x5A, host.sharedMemory.attachedSize(address));
    EXPECT_EQ(host.sharedMemory.shmdt(address), 0) << "attached memory outlives its removal";
    EXPECT_EQ(host.sharedMemory.totalAttachments(), 0U);
    EXPECT_EQ(host.sharedMemory.attachedSize(address), 0U);
  }
}

TEST(MemorySharedMemory, FailuresAreThoseOfTheCalls) {
  MemoryHost host;
  MemorySharedMemory& memory = host.sharedMemory;
  memory.create(1, 400, {});
  memory.create(2, 400, {true, true, false});
  memory.create(3, 400, {true, false, true});
  const int tiny = memory.create(4, 10, {false, false, false});
  const struct {
    std::uint32_t key;
    std::size_t size;
    int flags, error;
  } cases[] = {{9, 4, 0666, kEnoent},
               {1, 401, 0666, kEinval},
               {2, 4, 0666, kEacces},
               {9, 0, 01666, kEinval}};
  for (const auto& each : cases) {
    EXPECT_EQ(memory.shmget(each.key, each.size, each.flags), -1);
    EXPECT_EQ(memory.lastError(), each.error) << each.key;
  }
  EXPECT_EQ(memory.shmat(memory.shmget(3, 4, 0666), nullptr, 0), kShmFailed);
  EXPECT_EQ(memory.lastError(), kEacces);
  EXPECT_EQ(memory.attachedSize(memory.shmat(tiny, nullptr, 0)), 10U);
  const int id = memory.shmget(1, 400, 0666);
  memory.failAttach(1, AttachFailure::Null);
  EXPECT_EQ(memory.shmat(id, nullptr, 0), nullptr);
  memory.failAttach(1, AttachFailure::Failed);
  EXPECT_EQ(memory.shmat(id, nullptr, 0), kShmFailed);
  memory.failAttach(1, AttachFailure::None);
  auto* const bytes = static_cast<std::uint8_t*>(memory.shmat(id, nullptr, 0));
  EXPECT_EQ(memory.attachedSize(bytes), 4096U);
  EXPECT_EQ(memory.attachedSize(bytes + 4), 0U);
  memory.writeWord(id, 8, 0x01020304);
  EXPECT_EQ(bytes[8], 1);
  EXPECT_EQ(memory.shmdt(bytes + 4), -1);
  EXPECT_EQ(memory.shmdt(kShmFailed), -1);
}

TEST(MemoryMessagePorts, WaitingSendRunsTheLoopUntilTheAnswer) {
  MemoryHost host;
  std::vector<std::int32_t> got;
  serveOwnPort(host, [&](std::int32_t id, const CFData* data) -> std::optional<CFData> {
    got.push_back(data ? id : -id);
    return std::nullopt;
  });
  host.messagePorts.serve("server", {[&](std::int32_t, const CFData& data) {
                                       host.mainApplication.sendMessage(3, CFData{});
                                       return std::optional(CFData(data.rbegin(), data.rend()));
                                     },
                                     30});
  host.messagePorts.post(kOwnPort, 1, std::nullopt);
  host.clock.schedule(kNanosecondsPerTick * 10,
                      [&] { host.messagePorts.post(kOwnPort, 2, CFData{}); });
  const auto remote = host.messagePorts.CFMessagePortCreateRemote("server");
  EXPECT_EQ(remote, host.messagePorts.CFMessagePortCreateRemote("server"));
  const std::uint64_t start = host.clock.now();
  CFData reply;
  const std::uint8_t payload[] = {1, 2};
  EXPECT_EQ(host.messagePorts.CFMessagePortSendRequest(*remote, 8, payload, 1, 1, &reply), 0);
  EXPECT_EQ(reply, (CFData{2, 1}));
  EXPECT_EQ(got, (std::vector<std::int32_t>{-1, 2, 3}));
  EXPECT_EQ((host.clock.now() - start) / kNanosecondsPerTick, 30U);
  ASSERT_EQ(host.messagePorts.sent().size(), 1U);
  EXPECT_EQ(host.messagePorts.sent().front().data, (CFData{1, 2}));
}

TEST(MemoryMessagePorts, SilenceDeathAndFullnessEndAWait) {
  MemoryHost host;
  MemoryMessagePorts& ports = host.messagePorts;
  CFData reply;
  ports.serve("s", {nullptr, 0, true});
  auto remote = ports.CFMessagePortCreateRemote("s");
  const std::uint64_t start = host.clock.now();
  EXPECT_EQ(ports.CFMessagePortSendRequest(*remote, 1, {}, 1600, 1600, &reply),
            kCFMessagePortReceiveTimeout);
  EXPECT_EQ(host.clock.now() - start, 1600'000'000'000U);
  EXPECT_EQ(ports.CFMessagePortSendRequest(*remote, 1, {}, 0, 0, nullptr), 0);
  host.clock.schedule(1'000'000, [&] { ports.stopServing("s"); });
  EXPECT_EQ(ports.CFMessagePortSendRequest(*remote, 1, {}, 1600, 1600, &reply),
            kCFMessagePortIsInvalid);
  ports.serve("s", {nullptr, 0, false, true});
  EXPECT_EQ(ports.CFMessagePortSendRequest(*remote, 1, {}, 0, 0, nullptr), kCFMessagePortIsInvalid)
      << "a new server is a new peer";
  remote = ports.CFMessagePortCreateRemote("s");
  EXPECT_EQ(ports.CFMessagePortSendRequest(*remote, 1, {}, 2, 2, &reply),
            kCFMessagePortSendTimeout);
  EXPECT_EQ(
      ports.CFMessagePortSendRequest(*remote, 1, CFData(kMessagePayloadLimit + 1), 2, 2, nullptr),
      kCFMessagePortTransportError);
  EXPECT_EQ(ports.CFMessagePortCreateRemote("nobody"), nullptr);
  EXPECT_EQ(ports.CFMessagePortCreateLocal("s", {}), nullptr) << "another process serves it";
}

TEST(MemoryProcesses, NotificationsComeWithTheTurnOfTheRunLoop) {
  MemoryHost host;
  Lines seen;
  const auto watch = [&](WorkspaceNotification name, const char* word) {
    return host.processes.addObserver(name, [&seen, word](const ApplicationNotification& told) {
      seen.push_back(word + told.application->bundleIdentifier);
    });
  };
  const auto launched = watch(WorkspaceNotification::DidLaunchApplication, "+");
  const auto terminated = watch(WorkspaceNotification::DidTerminateApplication, "-");
  auto activated = watch(WorkspaceNotification::DidActivateApplication, "^");
  host.mainApplication.launch();
  host.mainApplication.bringToFront();
  ProcessSerialNumber psn;
  EXPECT_EQ(host.processes.GetFrontProcess(psn), noErr);
  EXPECT_EQ(psn, host.mainApplication.psn());
  EXPECT_EQ(host.processes.runningApplications().size(), 2U);
  EXPECT_TRUE(seen.empty());
  host.runPending();
  EXPECT_EQ(seen, (Lines{"+com.tallowmere.quorvane", "^com.tallowmere.quorvane"}));
  EXPECT_EQ(host.processes.frontmostApplication()->bundleIdentifier, "com.tallowmere.quorvane");
  const auto running = host.processes.runningApplications();
  EXPECT_EQ(running.size(), 3U);
  activated.reset();
  host.mainApplication.vanish(Notice::Missed);
  EXPECT_EQ(running[2].bundleIdentifier, "com.tallowmere.quorvane") << "valid until the next turn";
  EXPECT_EQ(host.processes.runningApplications().size(), 2U);
  EXPECT_EQ(host.processes.GetFrontProcess(psn), procNotFound);
  host.runPending();
  EXPECT_EQ(seen.size(), 2U);
  EXPECT_EQ(host.processes.frontmostApplication(), nullptr);
}

TEST(MemoryProcesses, WalkOverTheListEndsAndStartsAnew) {
  MemoryHost host;
  host.mainApplication.launch();
  ProcessSerialNumber psn;
  std::vector<std::uint32_t> walked;
  while (host.processes.GetNextProcess(psn) == noErr) walked.push_back(psn.lowLongOfPSN);
  EXPECT_EQ(walked, (std::vector<std::uint32_t>{8192, 8193, 8194}));
  EXPECT_EQ(psn, ProcessSerialNumber{});
  std::array<std::uint8_t, 256> name{};
  ProcessInfoRec info;
  info.processName = name.data();
  EXPECT_EQ(host.processes.GetProcessInformation({1, 8194}, info), noErr);
  EXPECT_EQ(info.processSignature, "QVPX"_4cc);
  EXPECT_EQ(std::string(name.begin(), name.begin() + 9), "\x08Quorvane");
  host.processes.find({1, 8194})->informationFails = true;
  EXPECT_NE(host.processes.GetProcessInformation({1, 8194}, info), noErr);
}

class MainApplicationTest : public testing::Test {
 protected:
  MainApplicationTest() {
    app.launch();
    bytes = static_cast<std::uint8_t*>(
        host.sharedMemory.shmat(host.sharedMemory.shmget(880, 376, 0666), nullptr, 0));
  }
  /// Asks for a scan and spins as long as it is waited for; true where the answer came in time.
  bool scan() {
    app.setField(1, app.field(1) | 0x10000);
    app.setField(54, 0x10000);
    const std::uint64_t deadline = host.clock.now() + 6 * kNanosecondsPerTick;
    while (bytes[68 + 4 * 54 + 1] & 1) {
      if (host.clock.mach_absolute_time() > deadline) return false;
    }
    return true;
  }

  MemoryHost host;
  MemoryMainApplication& app = host.mainApplication;
  std::uint8_t* bytes = nullptr;
};

TEST_F(MainApplicationTest, AnswersAScanAfterItsTicksOrNever) {
  EXPECT_FALSE(scan()) << "told nothing, it never answers";
  int actions = 0;
  app.answerScan({3, [&] { ++actions; }});
  const std::uint64_t start = host.clock.now();
  EXPECT_TRUE(scan());
  EXPECT_GE(host.clock.now() - start, 3 * kNanosecondsPerTick);
  EXPECT_EQ(app.field(1), 0U);
  app.answerScan({std::nullopt, [&] { ++actions; }});
  EXPECT_FALSE(scan());
  app.answerScan({9, [&] { ++actions; }});
  EXPECT_FALSE(scan());
  app.setField(54, 0);
  host.clock.advanceTicks(20);
  EXPECT_EQ(actions, 1) << "a request that was taken back isn't answered";
  app.answerScan({9, [&] { ++actions; }, true});
  EXPECT_FALSE(scan());
  app.setField(54, 0);
  host.clock.advanceTicks(20);
  EXPECT_EQ(actions, 2) << "but it is by one that lags";
}

TEST_F(MainApplicationTest, SendsAFixWithTheScan) {
  std::vector<CFData> got;
  serveOwnPort(host, [&](std::int32_t id, const CFData* data) -> std::optional<CFData> {
    EXPECT_EQ(id, 202);
    got.push_back(*data);
    return std::nullopt;
  });
  app.answerScan({0, [&] {
                    app.writeCorrectedText("the");
                    EXPECT_TRUE(app.sendFix(3, "the"));
                  }});
  EXPECT_TRUE(scan());
  EXPECT_EQ(app.published().text, "the");
  EXPECT_EQ(app.field(11), 1U);
  EXPECT_TRUE(got.empty()) << "messages wait for the run loop";
  host.runPending();
  EXPECT_EQ(got, (std::vector<CFData>{{0, 0, 0, 3, 't', 'h', 'e'}}));
}

TEST_F(MainApplicationTest, ComesBackWithNewSegments) {
  app.setField(19, 77);
  app.vanish(Notice::Queued, SegmentFate::Kept);
  EXPECT_EQ(bytes[68 + 4 * 19 + 3], 77);
  EXPECT_NE(host.sharedMemory.shmget(880, 376, 0666), -1) << "a crash leaves its segments";
  app.launch();
  EXPECT_EQ(app.field(19), 0U);
  EXPECT_EQ(bytes[68 + 4 * 19 + 3], 77) << "the old attachment still shows the old segment";
  EXPECT_EQ(host.sharedMemory.shmdt(bytes), 0);
  app.vanish();
  EXPECT_EQ(host.sharedMemory.shmget(880, 376, 0666), -1);
  EXPECT_EQ(app.field(6), 0U);
}

TEST(MemoryClock, ScheduledFunctionsRunInDueOrderAsTimeMoves) {
  MemoryHost host;
  Lines order;
  const std::uint64_t start = host.clock.now();
  const auto note = [&](const char* name) {
    order.push_back(name + std::to_string(host.clock.now() - start));
  };
  host.clock.schedule(30, [&] { note("c"); });
  host.clock.schedule(10, [&] {
    note("a");
    host.clock.schedule(5, [&] { note("b"); });
  });
  host.clock.schedule(30, [&] { note("d"); });
  host.clock.advance(29);
  host.clock.usleep(1);
  EXPECT_EQ(order, (Lines{"a10", "b15", "c30", "d30"}));
  EXPECT_EQ(host.clock.now() - start, 1029U);
  host.clock.step = 7;
  const std::uint64_t first = host.clock.mach_absolute_time();
  EXPECT_EQ(host.clock.mach_absolute_time() - first, 7U);
}

TEST(MemoryResources, ResourcesBelongToTheOpenCurrentFile) {
  MemoryHost host;
  MemoryResources& resources = host.resources;
  EXPECT_EQ(resources.CFBundleOpenBundleResourceMap("b"), 0);
  resources.openResult = 5;
  resources.bundle[{"GLYP"_4cc, 15873}] = {1, 2, 3};
  resources.bundle[{"STR#"_4cc, 131}] = {0, 0};
  const std::int32_t file = resources.CFBundleOpenBundleResourceMap("b");
  EXPECT_EQ(resources.Get1Resource("GLYP"_4cc, 15873), nullptr) << "not current yet";
  resources.UseResFile(file);
  const Handle glyphs = resources.Get1Resource("GLYP"_4cc, 15873);
  const Handle strings = resources.Get1Resource("STR#"_4cc, 131);
  ASSERT_TRUE(glyphs && strings);
  EXPECT_EQ(resources.Get1Resource("GLYP"_4cc, 15873), glyphs);
  resources.DetachResource(glyphs);
  resources.CFBundleCloseBundleResourceMap("b", file);
  EXPECT_TRUE(glyphs->hasContent);
  EXPECT_FALSE(strings->hasContent);
  EXPECT_EQ(resources.CurResFile(), MemoryResources::kApplicationFile);
}

}  // namespace
}  // namespace quorvane::memory
