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
  MessageSendState& sending() { return instance.state<MessageSendState>(); }
};

TEST(TickCount, IsTheConstantsArithmeticNotADivision) {
  EXPECT_EQ(ticksFromAbsoluteTime(16'666'666).count(), 0u);
  EXPECT_EQ(ticksFromAbsoluteTime(16'666'667).count(), 1u);
  EXPECT_EQ(ticksFromAbsoluteTime(1'000'000'000).count(), 60u);  // a division would give 59
  EXPECT_EQ(ticksFromAbsoluteTime(0x123456789ABCDEF0).count(), 78'706'108'079u);
  EXPECT_EQ(ticksFromAbsoluteTime(~std::uint64_t{0}).count(), 1'106'804'644'863u);
}

TEST_F(ToolCalls, APopupIsClosedByABitOfItsOwn) {
  launchKnown();
  Do_BIMCancelPopupWindowSession(instance);
  EXPECT_EQ(app.field(1), 2u);
  EXPECT_EQ(app.command()[0], 104u);
}

TEST_F(ToolCalls, TheMessageRouteHoldsBothGuardsWhileItSends) {
  launchKnown();
  std::array<std::uint32_t, 3> seen{};
  memory::MemoryServer& server = *host.messagePorts.server(kBasicAppPortName);
  server.answer = [&](std::int32_t, const CFData&) {
    seen = {app.field(16), sending().TOOLCALLBUSY, sending().AEITEM_Process_active};
    EXPECT_EQ(do_Get_Qorv_Menu_Handle(instance, 8), std::nullopt);
    return std::optional<CFData>(CFData{1, 2});
  };
  EXPECT_EQ(CallDirectQorvToolCommandAppEventWait(instance, 101), 0);
  EXPECT_EQ(seen, (std::array<std::uint32_t, 3>{1, 1, 1}));
  EXPECT_EQ(sending().TOOLCALLBUSY + sending().AEITEM_Process_active, 0);

  instance.state<PresenceState>().frontapp_signature = "????"_4cc;
  Do_BIMCancelInteractive_WindowSession(instance, 105);
  EXPECT_TRUE(logged("IMK - ???? process signature"));

  server.answer = [](std::int32_t id, const CFData&) {
    return std::optional<CFData>(CFData{static_cast<std::uint8_t>(id)});
  };
  app.setField(16, 1);
  EXPECT_EQ(GetQorvSubMenuHandleSelection(instance), CFData{9});  // doesn't ask for the other guard
  EXPECT_EQ(app.field(16), 0u);
}

TEST_F(ToolCalls, AnExceptionLeavesNothingBusy) {
  launchKnown();
  host.messagePorts.server(kBasicAppPortName)->answer =
      [](std::int32_t, const CFData&) -> std::optional<CFData> { throw std::runtime_error("x"); };
  EXPECT_THROW(CallDirectQorvToolCommandAppEventWait(instance, 101), std::runtime_error);
  EXPECT_EQ(app.field(16), 0u);
  EXPECT_EQ(sending().TOOLCALLBUSY + sending().AEITEM_Process_active, 0);

  app.answerScan({.afterTicks = 1, .action = [] { throw std::runtime_error("x"); }});
  EXPECT_THROW(Do_checktypingSentScan(instance), std::runtime_error);
  EXPECT_EQ(app.field(22), 0u);
  EXPECT_EQ(app.field(54), 0u);
}

}  // namespace
}  // namespace quorvane::test
