#include "src/bridge/ToolCalls.h"

#include <bit>
#include <map>
#include <stdexcept>

#include "src/bridge/QBIMMessageSend.h"
#include "tests/bridge/BridgeTest.h"

namespace quorvane::test {
namespace {

class ToolCalls : public BridgeTest {
 protected:
  MessageSendState& sending() { return process.state<MessageSendState>(); }
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
  std::map<unsigned, std::uint32_t> commandOfBit;
  std::uint64_t commands = 0;
  for (std::uint32_t cmd = 0; cmd < 65600; ++cmd) {
    app.setField(1, 0);
    Do_BIM_CallDirectQorvToolCommandAppEvent(process, cmd);
    if (app.field(1) == 0) continue;
    ++commands;
    commandOfBit[static_cast<unsigned>(std::countr_zero(app.field(1)))] = cmd;
    ASSERT_EQ(app.command()[0], cmd);
  }
  EXPECT_EQ(commands, 23u);
  EXPECT_EQ(commandOfBit,
            (std::map<unsigned, std::uint32_t>{
                {0, 104},    {2, 100},    {3, 16383},  {4, 17},     {5, 17140},  {6, 17141},
                {7, 17142},  {9, 17145},  {10, 17146}, {11, 17147}, {12, 17149}, {13, 17100},
                {14, 17101}, {15, 17102}, {16, 17110}, {17, 17111}, {19, 65534}, {20, 16390},
                {22, 2},     {23, 6},     {24, 7},     {29, 121},   {31, 35}}));
}

TEST_F(ToolCalls, ARequestIsDescribedBeforeItsBitIsSet) {
  launchKnown();
  host.sharedMemory.write(app.segment(896), 0, std::vector<std::uint8_t>(24, 9));
  app.setField(1, 1);
  Do_Check_ToolCRecPtr_USEFLAGS2(process, 4, 104);
  EXPECT_EQ(calls(), (Lines{"WakeUpProcess", "shmget 896 408", "shmat", "menuBarOwningApplication",
                            "shmdt", "shmget 880 376", "shmat"}));
  EXPECT_EQ(app.field(1), 0x11u);  // what was asked before stays
  EXPECT_EQ(app.command(),
            (std::array<std::uint32_t, 6>{104, 0, 0x09090909, "WRTR"_4cc, 4243, 0x09090909}));
  EXPECT_TRUE(logged("Do_Check_ToolCRecPtr_USEFLAGS2 send, 104"));
  Do_Check_ToolCRecPtr_USEFLAGS2(process, 4, 17);  // other commands don't wake
  EXPECT_EQ(calls().front(), "shmget 896 408");
}

TEST_F(ToolCalls, WindowsAreClosedByBitsOfTheirOwnAndOneCommand) {
  launchKnown();
  Do_BIMCancelWindowSession(process);
  EXPECT_EQ(app.field(1), 1u);
  Do_BIMCancelPopupWindowSession(process);
  EXPECT_EQ(app.field(1), 3u);
  EXPECT_EQ(app.command()[0], 104u);
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
  memory::MemoryServer& server = *host.messagePorts.server(kBasicAppPortName);
  server.answer = [&](std::int32_t, const CFData&) {
    seen = {app.field(16), sending().TOOLCALLBUSY, sending().AEITEM_Process_active};
    EXPECT_EQ(do_Get_Qorv_Menu_Handle(process, 8), std::nullopt);
    return std::optional<CFData>(CFData{1, 2});
  };
  GetToolCRecPtr(process);
  host.journal.clear();
  EXPECT_EQ(CallDirectQorvToolCommandAppEventWait(process, 101), 0);
  EXPECT_EQ(calls(), (Lines{"shmdt", "CFMessagePortCreateRemote", "CFMessagePortSendRequest",
                            "shmget 880 376", "shmat"}));
  EXPECT_EQ(seen, (std::array<std::uint32_t, 3>{1, 1, 1}));
  EXPECT_EQ(sending().TOOLCALLBUSY + sending().AEITEM_Process_active, 0);

  process.state<PresenceState>().frontapp_signature = "????"_4cc;
  Do_BIMCancelInteractive_WindowSession(process, 105);
  EXPECT_TRUE(logged("IMK - ???? process signature"));

  server.answer = [](std::int32_t id, const CFData&) {
    return std::optional<CFData>(CFData{static_cast<std::uint8_t>(id)});
  };
  app.setField(16, 1);
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

}  // namespace
}  // namespace quorvane::test
