// What tests lean on and nothing else would notice: the moment at which the world changes, a
// request that was taken back, the order of what is due.

#include "hosts/memory/MemoryHost.h"

#include <gtest/gtest.h>

namespace quorvane::memory {
namespace {

using Lines = std::vector<std::string>;

TEST(MemoryHost, MainApplicationVanishesJustBeforeTheNthCall) {
  for (const std::uint64_t n : {1U, 2U, 3U, 4U}) {
    MemoryHost host;
    host.mainApplication.launch(Notice::Missed);
    host.journal.beforeCall(n, [&] { host.mainApplication.vanish(); });
    const int id = host.sharedMemory.shmget(880, 376, 0666);
    EXPECT_EQ(id == -1, n == 1);
    EXPECT_EQ(host.sharedMemory.shmat(id, nullptr, 0) == kShmFailed, n <= 2);
    const auto remote =
        host.messagePorts.CFMessagePortCreateRemote(MemoryMainApplication::kServerPort);
    EXPECT_EQ(remote == nullptr, n <= 3);
    EXPECT_EQ(host.journal.calls(), 3U);
  }
}

TEST(MemoryHost, OnlyALaggingMainApplicationAnswersWhatWasTakenBack) {
  for (const bool lagging : {false, true}) {
    MemoryHost host;
    MemoryMainApplication& app = host.mainApplication;
    app.launch();
    int answers = 0;
    app.answerScan({9, [&] { ++answers; }, lagging});
    app.setField(1, 0x10000);
    app.setField(54, 0x10000);
    host.clock.advanceTicks(6);
    app.setField(54, 0);
    host.clock.advanceTicks(20);
    EXPECT_EQ(answers, lagging ? 1 : 0);
  }
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
}

TEST(MemoryMessagePorts, TimersFireInDueOrderWithATurnBetween) {
  MemoryHost host;
  Lines order;
  const std::uint64_t start = host.clock.now();
  const auto note = [&](const char* name) {
    order.push_back(name + std::to_string((host.clock.now() - start) / 100'000'000));
  };
  RunLoop& loop = host.messagePorts;
  std::unique_ptr<Registration> twice = loop.addTimer(0.3, 0.5, [&] {
    note("a");
    if (order.size() > 2) twice.reset();
  });
  const auto once = loop.addTimer(0.4, 0, [&] { note("b"); });
  static_cast<void>(loop.addTimer(0.1, 0, [&] { note("cancelled"); }));
  host.clock.usleep(350'000);
  EXPECT_EQ(order, Lines{});
  host.wait(2'000'000'000);
  EXPECT_EQ(order, (Lines{"a4", "b4", "a9"}));
}

TEST(MemoryMessagePorts, WhatIsDelayedRunsOnceOnTheFirstTurnAfterItsTime) {
  MemoryHost host;
  Lines order;
  RunLoop& loop = host.messagePorts;
  loop.performAfterDelay([&] { order.emplace_back("late"); }, 1);
  loop.performAfterDelay([&] { order.emplace_back("soon"); }, 0.5);
  host.clock.advanceSeconds(2);
  EXPECT_EQ(order, Lines{});
  host.runPending();
  host.runPending();
  EXPECT_EQ(order, (Lines{"soon", "late"}));
}

}  // namespace
}  // namespace quorvane::memory
