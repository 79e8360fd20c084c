#include "src/bridge/ToolCalls.h"

#include <map>
#include <stdexcept>

#include "src/bridge/QBIMMessageSend.h"
#include "tests/bridge/BridgeTest.h"

namespace quorvane::test {
namespace {

constexpr std::uint32_t kScanMask = 0x10000;

class ToolCalls : public BridgeTest {
 protected:
  MessageSendState& sending() { return process.state<MessageSendState>(); }
  /// Ticks on the clock of the host, which one reading may move a little.
  [[nodiscard]] std::uint64_t ticks() const { return ticksFromAbsoluteTime(host.clock.now()); }
  /// The calls, without the run of clock readings and the numbers of the segments.
  Lines calls() {
    Lines names;
    for (const std::string& line : host.journal.take()) {
      std::string name = line.substr(0, line.find(' '));
      if (name == "shmget") name = line.substr(0, line.find(" 0"));
      names.push_back(name);
    }
    return names;
  }
};

TEST(TickCount, IsTheConstantsArithmeticNotADivision) {
  EXPECT_EQ(ticksFromAbsoluteTime(16'666'666), 0u);
  EXPECT_EQ(ticksFromAbsoluteTime(16'666'667), 1u);
  EXPECT_EQ(ticksFromAbsoluteTime(1'000'000'000), 60u);  // a division would give 59
  EXPECT_EQ(ticksFromAbsoluteTime(0x123456789ABCDEF0), 78'706'108'079u);
  EXPECT_EQ(ticksFromAbsoluteTime(~std::uint64_t{0}), 1'106'804'644'863u);
}

TEST_F(ToolCalls, TheTableDecidesWhichCommandSetsWhichBit) {
  launchKnown();
  const std::map<std::uint32_t, unsigned> bits{
      {2, 22},     {6, 23},     {7, 24},     {17, 4},     {35, 31},    {100, 2},
      {104, 0},    {121, 29},   {16383, 3},  {16390, 20}, {17100, 13}, {17101, 14},
      {17102, 15}, {17110, 16}, {17111, 17}, {17140, 5},  {17141, 6},  {17142, 7},
      {17145, 9},  {17146, 10}, {17147, 11}, {17149, 12}, {65534, 19}};
  for (std::uint32_t cmd = 0; cmd < 65600; cmd = cmd == 200 ? 16300 : cmd + 1) {
    app.setField(1, 0);
    Do_BIM_CallDirectQorvToolCommandAppEvent(process, cmd);
    const auto row = bits.find(cmd);
    ASSERT_EQ(app.field(1), row == bits.end() ? 0 : 1u << row->second) << cmd;
    if (row != bits.end()) {
      ASSERT_EQ(app.command()[0], cmd);
    }
    if (cmd == 17200) cmd = 65500;
  }
  const struct {
    void (*call)(Process&);
    std::uint32_t requests, cmd;
  } fixed[] = {{Do_BIMCancelWindowSession, 1, 104},
               {Do_BIMCancelPopupWindowSession, 2, 104},
               {Do_BIMShowHideWindowSession, 4, 100},
               {Do_UpdateDictionarySettings, 8, 16383}};
  for (const auto& row : fixed) {
    app.setField(1, 0);
    row.call(process);
    EXPECT_EQ(app.field(1), row.requests);
    EXPECT_EQ(app.command()[0], row.cmd);
  }
}

TEST_F(ToolCalls, ARequestIsDescribedBeforeItsBitIsSet) {
  launchKnown();
  const std::array<std::uint8_t, 24> garbage{9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9,
                                             9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9};
  host.sharedMemory.write(app.segment(896), 0, garbage);
  app.setField(1, 1);
  Do_Check_ToolCRecPtr_USEFLAGS2(process, 4, 104);
  EXPECT_EQ(calls(), (Lines{"WakeUpProcess", "shmget 896 408", "shmat", "menuBarOwningApplication",
                            "shmdt", "shmget 880 376", "shmat"}));
  EXPECT_EQ(app.field(1), 0x11u);  // what was asked before stays
  EXPECT_EQ(app.command(),
            (std::array<std::uint32_t, 6>{104, 0, 0x09090909, "WRTR"_4cc, 4243, 0x09090909}));
  EXPECT_EQ(
      Lines(host.log.lines.begin(), host.log.lines.end()),
      (Lines{"***** Shared AEToolEventSelectStruct", "Do_Check_ToolCRecPtr_USEFLAGS2 send, 104",
             "Do_Check_ToolCRecPtr_USEFLAGS2 done"}));
  Do_Check_ToolCRecPtr_USEFLAGS2(process, 4, 17);  // other commands don't wake
  EXPECT_EQ(calls().front(), "shmget 896 408");
}

TEST_F(ToolCalls, WithoutTheRecordACommandIsLostInTheOpen) {
  Do_Check_ToolCRecPtr_USEFLAGS2(process, 4, 17);
  EXPECT_TRUE(logged("No Shared Mem (Do_Check_ToolCRecPtr_USEFLAGS2)"));
  Do_BIM_CallDirectQorvToolCommandAppEvent_Wait(process, 108);
  EXPECT_EQ(host.log.lines.back(), "Do_Check_ToolCRecPtr_USEFLAGS2_Wait done");
  Do_checktypingSentScan(process);
  EXPECT_TRUE(logged("Failed to open com bridge"));
}

TEST_F(ToolCalls, AWaitingRequestIsBusyUntilTheAnswer) {
  launchKnown();
  std::uint32_t busy = 0;
  app.answer(17, {.afterTicks = 5, .action = [&] { busy = app.field(22); }});
  const std::uint64_t start = ticks();
  EXPECT_EQ(Do_BIM_CallDirectQorvToolCommandAppEvent_Wait(process, 108), 0);
  EXPECT_EQ(busy, 2u);
  EXPECT_LE(ticks() - start, 7u);
  EXPECT_EQ(app.field(1), 0u);
  EXPECT_EQ(app.field(22), 0u);
  EXPECT_EQ(host.log.lines.back(), "Do_Check_ToolCRecPtr_USEFLAGS2_Wait done");
  EXPECT_FALSE(logged("***************** ToolCRecPtr_USEFLAGS2_Wait TIMEOUT"));
}

TEST_F(ToolCalls, AWaitEndsAfter120TicksWithTheRequestStanding) {
  launchKnown();
  app.setField(22, 4);
  const std::uint64_t start = ticks();
  Do_BIM_CallDirectQorvToolCommandAppEvent_Wait(process, 16390);
  EXPECT_GE(ticks() - start, 120u);
  EXPECT_LE(ticks() - start, 121u);
  EXPECT_EQ(app.field(1), 1u << 19);
  EXPECT_EQ(app.field(22), 4u);
  EXPECT_TRUE(logged("***************** ToolCRecPtr_USEFLAGS2_Wait TIMEOUT"));
  host.journal.clear();
  Do_BIM_CallDirectQorvToolCommandAppEvent_Wait(process, 2);
  EXPECT_EQ(calls(), Lines{});
}

TEST_F(ToolCalls, TheSentenceScanWaitsSixTicksAndLeavesNoFlag) {
  launchKnown();
  std::array<std::uint32_t, 3> seen{};
  app.answerScan({.afterTicks = 2, .action = [&] {
                    seen = {app.field(1), app.field(54), app.field(22)};
                  }});
  Do_checktypingSentScan(process);
  EXPECT_EQ(seen, (std::array<std::uint32_t, 3>{kScanMask, kScanMask, kScanMask}));
  EXPECT_EQ(app.command()[0], 87u);
  EXPECT_TRUE(logged("notfinished ticks 2") || logged("notfinished ticks 3"));
  EXPECT_EQ(app.field(22), 0u);
  EXPECT_EQ(calls(), (Lines{"shmget 880 376", "shmat", "WakeUpProcess", "shmget 896 408", "shmat",
                            "menuBarOwningApplication", "shmdt", "mach_absolute_time"}));

  app.ignoreScan();
  host.log.lines.clear();
  const std::uint64_t start = ticks();
  Do_checktypingSentScan(process);
  EXPECT_GE(ticks() - start, 6u);
  EXPECT_LE(ticks() - start, 7u);
  EXPECT_EQ(host.log.lines.back(), "***** Shared AEToolEventSelectStruct");  // silent
  EXPECT_EQ(app.field(1), kScanMask);
  EXPECT_EQ(app.field(54), 0u);
  EXPECT_EQ(app.field(22), 0u);
}

TEST_F(ToolCalls, TheMenuBufferIsCopiedWhereItHasData) {
  launchKnown();
  app.answer(28, {});
  EXPECT_EQ(do_New_Get_Qorv_Menu_Handle(process, 0), std::nullopt);
  app.setMenuBuffer({"Formal", "Plain"}, 2);
  const auto buffer = do_New_Get_Qorv_Menu_Handle(process, 0);
  ASSERT_TRUE(buffer);
  EXPECT_EQ(app.command()[0], 8u);
  EXPECT_EQ(std::string(buffer->begin(), buffer->begin() + 15),
            std::string("\0\0\0\2\0\0\0\2\6Formal", 15));
  EXPECT_EQ(host.sharedMemory.totalAttachments(), 1u);
}

TEST_F(ToolCalls, TheMessageRouteHoldsBothGuardsWhileItSends) {
  launchKnown();
  std::array<std::uint32_t, 3> seen{};
  Lines nested;
  host.messagePorts.server(kBasicAppPortName)->answer = [&](std::int32_t, const CFData&) {
    seen = {app.field(16), sending().TOOLCALLBUSY, sending().AEITEM_Process_active};
    CallDirectQorvToolCommandAppEvent(process, 102);
    EXPECT_EQ(do_Get_Qorv_Menu_Handle(process, 8), std::nullopt);
    return std::optional<CFData>(CFData{1, 2});
  };
  GetToolCRecPtr(process);
  host.journal.clear();
  EXPECT_EQ(CallDirectQorvToolCommandAppEventWait(process, 101), 0);
  EXPECT_EQ(calls(), (Lines{"shmdt", "CFMessagePortCreateRemote", "CFMessagePortSendRequest",
                            "shmget 880 376", "shmat"}));
  EXPECT_EQ(seen, (std::array<std::uint32_t, 3>{1, 1, 1}));
  EXPECT_TRUE(logged("*** IMK - TOOLCALLBUSY ***"));
  ASSERT_EQ(host.messagePorts.sent().size(), 1u);  // the nested ones are lost
  EXPECT_EQ(app.field(16), 0u);
  EXPECT_EQ(sending().TOOLCALLBUSY + sending().AEITEM_Process_active, 0);

  app.setField(16, 1);
  CallDirectQorvToolCommandAppEvent(process, 102);
  EXPECT_TRUE(logged("*** IMK - MACHPORT_BUSY ***"));
  EXPECT_EQ(host.messagePorts.sent().size(), 1u);
  EXPECT_EQ(app.field(16), 1u);
  host.messagePorts.server(kBasicAppPortName)->answer = [](std::int32_t id, const CFData&) {
    return std::optional<CFData>(CFData{static_cast<std::uint8_t>(id)});
  };
  EXPECT_EQ(GetQorvSubMenuHandleSelection(process), CFData{9});  // doesn't ask for the other guard
  EXPECT_EQ(app.field(16), 0u);
}

TEST_F(ToolCalls, AnExceptionLeavesNothingBusy) {
  launchKnown();
  host.messagePorts.server(kBasicAppPortName)->answer =
      [](std::int32_t, const CFData&) -> std::optional<CFData> { throw std::runtime_error("x"); };
  EXPECT_THROW(CallDirectQorvToolCommandAppEventWait(process, 101), std::runtime_error);
  EXPECT_EQ(app.field(16), 0u);
  EXPECT_EQ(sending().TOOLCALLBUSY + sending().AEITEM_Process_active, 0);

  app.answerScan({.afterTicks = 1, .action = [] { throw std::runtime_error("x"); }});
  EXPECT_THROW(Do_checktypingSentScan(process), std::runtime_error);
  EXPECT_EQ(app.field(22), 0u);
  EXPECT_EQ(app.field(54), 0u);
}

TEST_F(ToolCalls, AnUnknownFrontApplicationIsLoggedAndTheCommandSent) {
  launchKnown();
  process.state<PresenceState>().frontapp_signature = "????"_4cc;
  CallDirectQorvToolCommandAppEvent(process, 105);
  EXPECT_TRUE(logged("IMK - ???? process signature"));
  process.state<PresenceState>().frontapp_signature = 0;
  host.processes.getFrontProcessFails = true;
  Do_BIMCancelInteractive_WindowSession(process, 105);
  EXPECT_TRUE(logged("IMK - Null process signature"));
  EXPECT_EQ(host.messagePorts.sent().size(), 2u);
}

TEST_F(ToolCalls, TheOpeningRouteNamesTheApplicationThatWasInFront) {
  EXPECT_EQ(CallQuorvaneToolCommand(process, 2, true), 0);  // not running: nothing is sent
  launchKnown();
  host.clock.step = 0;
  app.setField(41, 1);
  CallQuorvaneToolCommand(process, 2, true);  // a check is running
  EXPECT_TRUE(host.messagePorts.sent().empty());
  app.setField(41, 0);
  host.messagePorts.server(kBasicAppPortName)->answer = [&](std::int32_t, const CFData&) {
    EXPECT_EQ(host.processes.front(), app.psn());
    EXPECT_EQ(Get_OPENGlobalToolCRecPtr(process), nullptr);
    return std::optional<CFData>(CFData{});
  };
  CallQuorvaneToolCommand(process, 2, true);
  ASSERT_EQ(host.messagePorts.sent().size(), 1u);
  EXPECT_TRUE(host.messagePorts.sent()[0].waiting);
  EXPECT_EQ(std::string(host.messagePorts.sent()[0].data.begin() + 12,
                        host.messagePorts.sent()[0].data.begin() + 16),
            "RTRW");  // host order
  EXPECT_EQ(SwitchApplication(process, "none"_4cc), 0);
}

}  // namespace
}  // namespace quorvane::test
