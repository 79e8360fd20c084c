// What tests lean on and nothing else would notice: a request that was taken back, the order of
// timers.

#include "hosts/memory/MemoryHost.h"

#include <gtest/gtest.h>

namespace quorvane::memory {
namespace {

using Lines = std::vector<std::string>;

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

TEST(MemoryMessagePorts, TimersFireInDueOrderWithATurnBetween) {
  MemoryHost host;
  Lines order;
  const std::uint64_t start = host.clock.now();
  const auto note = [&](const char* name) {
    order.push_back(name + std::to_string((host.clock.now() - start) / 100'000'000));
  };
  RunLoop& loop = host.messagePorts;
  std::unique_ptr<Registration> twice = loop.addTimer(Seconds(0.3), Seconds(0.5), [&] {
    note("a");
    if (order.size() > 2) twice.reset();
  });
  const auto once = loop.addTimer(Seconds(0.4), Seconds(0), [&] { note("b"); });
  static_cast<void>(loop.addTimer(Seconds(0.1), Seconds(0), [&] { note("cancelled"); }));
  host.clock.usleep(Microseconds(350'000));
  EXPECT_EQ(order, Lines{});
  host.wait(2'000'000'000);
  EXPECT_EQ(order, (Lines{"a4", "b4", "a9"}));
}

}  // namespace
}  // namespace quorvane::memory
