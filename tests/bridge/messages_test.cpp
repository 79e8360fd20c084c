#include <cstring>
#include <memory>

#include "src/bridge/QBIMMessageSend.h"
#include "src/shell/QBIMMessageReceive.h"
#include "tests/bridge/BridgeTest.h"

namespace quorvane::test {
namespace {

constexpr std::string_view kOwnName = "Q7T2M4K9W1.com.tallowmere.QorvInPortServer08192";

CFData bytes(std::string_view text) { return {text.begin(), text.end()}; }

class Messages : public BridgeTest {
 protected:
  void receive(std::int32_t messageId, const std::optional<CFData>& data = {}) {
    EXPECT_EQ(BIMMessagePortCallBack(instance, messageId, data ? &*data : nullptr), std::nullopt);
  }
};

TEST_F(Messages, ShortAndAbsentPayloadsAreDropped) {
  for (const auto& data :
       {std::optional<CFData>{}, std::optional(CFData{}), std::optional(bytes({"\0\0\1", 3}))}) {
    for (const std::int32_t one : {202, 220, 230, 240, 250, 251}) receive(one, data);
    EXPECT_TRUE(host.log.lines.empty()) << host.log.lines.front();
  }
  for (const std::int32_t pastes : {250, 251}) receive(pastes, bytes({"\xFF\0\0\1..", 6}));
  EXPECT_EQ(std::ranges::count(host.log.lines, "kBasicMessagePaste"), 1);
  EXPECT_EQ(std::ranges::count(host.log.lines, "kBasicMessage_DoSpecialPasteCommand"), 1);
}

TEST_F(Messages, TheOwnPortReportsTheStepThatFails) {
  EXPECT_EQ(BIMCreatePortName(instance, {4294967295, 12}),
            "Q7T2M4K9W1.com.tallowmere.QorvInPortServer429496729512");
  host.processes.getCurrentProcessFails = true;
  EXPECT_NE(BIMInitializeMessageReceiving(instance), 0);
  host.processes.getCurrentProcessFails = false;
  for (const auto& [fails, result] : {std::pair{&host.messagePorts.createLocalFails, -1},
                                      {&host.messagePorts.getCurrentFails, -2},
                                      {&host.messagePorts.createRunLoopSourceFails, -3}}) {
    *fails = true;
    EXPECT_EQ(BIMInitializeMessageReceiving(instance), result);
    EXPECT_FALSE(host.messagePorts.post(kOwnName, 7, std::nullopt));
    *fails = false;
  }
}

TEST_F(Messages, APortThatOutlivesItsProcessIsDeaf) {
  auto shortLived = std::make_unique<Instance>(host.platform());
  ASSERT_EQ(BIMInitializeMessageReceiving(*shortLived), 0);
  shortLived.reset();
  ASSERT_TRUE(host.messagePorts.post(kOwnName, 202, bytes({"\0\0\0\0a", 5})));
  host.messagePorts.runPending();
  EXPECT_EQ(std::ranges::count(host.log.lines, "DONE"), 0);
}

TEST_F(Messages, SendingFailsAsEachSenderSays) {
  EXPECT_EQ(BIM_SendMessageToUIServer(instance, 1, 0), -1);
  EXPECT_EQ(BIMSendMessageToAppServerWithReply(instance, 1, 0), -1);
  EXPECT_EQ(BIMSendMessageToMenuletServer(instance, 1), -1);
  memory::MemoryServer crowded;
  crowded.full = true;
  host.messagePorts.serve(kBasicMenuletPortName, crowded);
  EXPECT_EQ(BIMSendMessageToMenuletServer(instance, 1), -2);
  launchKnown();
  EXPECT_EQ(BIMSendAppMessage(instance, 55), 0);
  EXPECT_EQ(host.messagePorts.sent().back().id, 100);
  host.messagePorts.server(kBasicAppPortName)->silent = true;
  const std::uint64_t start = host.clock.now();
  EXPECT_EQ(BIMSendMessageToAppServerWithReply(instance, 1, 0), -2);
  EXPECT_NEAR(static_cast<double>(host.clock.now() - start) / 1e9, 10, 1);
}

}  // namespace
}  // namespace quorvane::test
