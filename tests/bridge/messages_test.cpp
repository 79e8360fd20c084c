#include <cstring>
#include <memory>

#include "src/bridge/QBIMMessageReceive.h"
#include "src/bridge/QBIMMessageSend.h"
#include "tests/bridge/BridgeTest.h"

namespace quorvane::test {
namespace {

constexpr std::string_view kOwnName = "Q7T2M4K9W1.com.tallowmere.QorvInPortServer08192";

/// The rooms above, as seen by the port.
class Target : public MessageTarget {
 public:
  std::uint64_t BIMGetActiveSession() override {
    calls.push_back("active");
    return 7;
  }
  std::uint32_t documentTag(std::uint64_t) override { return 1; }
  void Update_Document_Session(std::uint64_t handle) override {
    calls.push_back("update " + std::to_string(handle));
  }
  void commitFix(const std::u16string* text, std::uint32_t replaceLength) override {
    calls.push_back((text ? "commit " : "refuse ") + std::to_string(replaceLength));
  }
  void Post_Paste_CommandKey(std::int32_t pid) override {
    calls.push_back("paste " + std::to_string(pid));
  }
  void Post_SpecialPaste_CommandKey(std::int32_t pid) override {
    calls.push_back("special paste " + std::to_string(pid));
  }
  Lines take() { return std::exchange(calls, {}); }

  Lines calls;
};

CFData bytes(std::string_view text) { return {text.begin(), text.end()}; }
std::int32_t id(FourCharCode code) { return static_cast<std::int32_t>(code); }

class Messages : public BridgeTest {
 protected:
  Messages() { setMessageTarget(process, &target); }
  void receive(std::int32_t messageId, const std::optional<CFData>& data = {}) {
    EXPECT_EQ(BIMMessagePortCallBack(process, messageId, data ? &*data : nullptr), std::nullopt);
  }
  Target target;
};

TEST_F(Messages, ShortAndAbsentPayloadsAreDropped) {
  for (const auto& data :
       {std::optional<CFData>{}, std::optional(CFData{}), std::optional(bytes({"\0\0\1", 3}))}) {
    receive(202, data);
    EXPECT_EQ(target.take(), Lines{"active"});
    for (const std::int32_t other : {220, 230, 240, 250, 251, id("oMen"_4cc)}) receive(other, data);
    EXPECT_TRUE(host.log.lines.empty()) << host.log.lines.front();
    EXPECT_TRUE(target.calls.empty());
  }
  for (const std::int32_t pastes : {250, 251}) receive(pastes, bytes({"\xFF\0\0\1..", 6}));
  EXPECT_EQ(target.take(), (Lines{"paste -16777215", "special paste -16777215"}));
  setMessageTarget(process, nullptr);
  receive(202, bytes({"\0\0\0\3the", 7}));
  receive(id("Updt"_4cc));
  EXPECT_TRUE(target.calls.empty());
}

TEST_F(Messages, TheOwnPortReportsTheStepThatFails) {
  EXPECT_EQ(BIMCreatePortName(process, {4294967295, 12}),
            "Q7T2M4K9W1.com.tallowmere.QorvInPortServer429496729512");
  host.processes.getCurrentProcessFails = true;
  EXPECT_NE(BIMInitializeMessageReceiving(process), 0);
  host.processes.getCurrentProcessFails = false;
  for (const auto& [fails, result] : {std::pair{&host.messagePorts.createLocalFails, -1},
                                      {&host.messagePorts.getCurrentFails, -2},
                                      {&host.messagePorts.createRunLoopSourceFails, -3}}) {
    *fails = true;
    EXPECT_EQ(BIMInitializeMessageReceiving(process), result);
    EXPECT_FALSE(host.messagePorts.post(kOwnName, 7, std::nullopt));
    *fails = false;
  }
}

TEST_F(Messages, APortThatOutlivesItsProcessIsDeaf) {
  auto shortLived = std::make_unique<Process>(host.platform());
  setMessageTarget(*shortLived, &target);
  ASSERT_EQ(BIMInitializeMessageReceiving(*shortLived), 0);
  shortLived.reset();
  ASSERT_TRUE(host.messagePorts.post(kOwnName, 202, bytes({"\0\0\0\0a", 5})));
  host.messagePorts.runPending();
  EXPECT_TRUE(target.calls.empty());
}

TEST_F(Messages, SendsCarryCommandAndSignatureInHostOrder) {
  launchKnown();
  EXPECT_EQ(BIM_SendMessageToUIServer(process, 105, "WRTR"_4cc), 0);
  EXPECT_EQ(BIMSendAppMessage(process, 55), 0);
  for (const std::uint32_t messageId : {105u, 100u}) {
    const std::array<std::uint32_t, 6> words{messageId, 0, 0, "WRTR"_4cc, 0, 0};
    const memory::SentMessage& sent = host.messagePorts.sent()[messageId == 105 ? 0 : 1];
    ASSERT_EQ(sent.data.size(), sizeof(words));
    EXPECT_EQ(std::memcmp(sent.data.data(), words.data(), sizeof(words)), 0) << messageId;
    EXPECT_EQ(sent.waiting, messageId == 100);
  }
}

TEST_F(Messages, SendingFailsAsEachSenderSays) {
  EXPECT_EQ(BIM_SendMessageToUIServer(process, 1, 0), -1);
  EXPECT_EQ(BIMSendMessageToAppServerWithReply(process, 1, 0), -1);
  EXPECT_EQ(BIMSendMessageToMenuletServer(process, 1), -1);
  memory::MemoryServer crowded;
  crowded.full = true;
  host.messagePorts.serve(kBasicMenuletPortName, crowded);
  EXPECT_EQ(BIMSendMessageToMenuletServer(process, 1), -2);
  app.server.silent = true;
  launchKnown();
  const std::uint64_t start = host.clock.now();
  EXPECT_EQ(BIMSendMessageToAppServerWithReply(process, 1, 0), -2);
  EXPECT_NEAR(static_cast<double>(host.clock.now() - start) / 1e9, 10, 1);
}

}  // namespace
}  // namespace quorvane::test
