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
    return session;
  }
  std::uint32_t documentTag(std::uint64_t) override { return tag; }
  void Update_Document_Session(std::uint64_t handle) override {
    calls.push_back("update " + std::to_string(handle));
  }
  void Do_nsstring_commit_to_composition(const std::u16string& text,
                                         std::uint32_t replaceLength) override {
    calls.push_back("commit " + std::to_string(replaceLength));
    committed = text;
  }
  Lines take() { return std::exchange(calls, {}); }

  std::uint64_t session = 7;
  std::uint32_t tag = 1;
  Lines calls;
  std::u16string committed;
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

TEST_F(Messages, TextReplacesAndRefreshesTheSession) {
  receive(202, bytes({"\0\0\0\3the\xE2\x80\x99", 10}));
  EXPECT_EQ(target.take(), (Lines{"active", "commit 3", "update 7"}));
  EXPECT_EQ(target.committed, u"the\u2019");
  receive(202, bytes({"\xFF\xFF\xFF\xFE", 4}));  // no text
  EXPECT_EQ(target.take(), (Lines{"active", "commit 4294967294", "update 7"}));
  EXPECT_EQ(target.committed, u"");
  target.tag = 0;
  receive(202, bytes({"\0\0\0\0x", 5}));
  EXPECT_EQ(target.take(), (Lines{"active", "commit 0"}));
  target.tag = 1;
  receive(202, bytes({"\0\0\0\1\xC3\x28\xFF", 7}));  // text in no encoding
  EXPECT_EQ(target.take(), (Lines{"active", "update 7"}));
  EXPECT_EQ(Lines(host.log.lines.end() - 2, host.log.lines.end()),
            (Lines{"newStr NULL ERROR", "DONE"}));
  setMessageTarget(process, nullptr);
  receive(202, bytes({"\0\0\0\3the", 7}));
  receive(id("Updt"_4cc));
  EXPECT_TRUE(target.calls.empty());
}

TEST_F(Messages, ShortAndAbsentPayloadsAreDropped) {
  for (const auto& data :
       {std::optional<CFData>{}, std::optional(CFData{}), std::optional(bytes({"\0\0\1", 3}))}) {
    receive(202, data);
    EXPECT_EQ(target.take(), Lines{"active"});
    for (const std::int32_t other : {220, 230, 240, 250, 251, id("oMen"_4cc)}) receive(other, data);
    EXPECT_TRUE(host.log.lines.empty()) << host.log.lines.front();
  }
  receive(7, bytes("anything"));
  EXPECT_TRUE(logged("*** BIMMessagePortCallBack InputMethod"));
  EXPECT_EQ(target.take(), Lines{});
}

TEST_F(Messages, OrdersOfTheOtherSide) {
  launchKnown();
  receive(id("Updt"_4cc));
  EXPECT_EQ(target.take(), (Lines{"active", "update 7"}));
  target.session = 0;
  receive(id("Updt"_4cc));
  EXPECT_EQ(target.take(), Lines{"active"});
  receive(id("gInt"_4cc));
  EXPECT_EQ(app.field(51), 8u);
  receive(id("IMqt"_4cc));
  EXPECT_EQ(host.application.exitStatus, -1);
  EXPECT_EQ(host.sharedMemory.totalAttachments(), 0u);
  EXPECT_EQ(host.log.lines.back(), "input method exit");  // no Pencil Menu to quit
}

TEST_F(Messages, ThePencilMenuIsToldToQuitBeforeUs) {
  host.messagePorts.serve(kBasicMenuletPortName, {});
  host.processes.add({{}, 0, "Menu", "QVKS"_4cc, "APPL"_4cc, 0, "com.tallowmere.menulet", false},
                     memory::Notice::Missed);
  receive(id("IMqt"_4cc));
  ASSERT_EQ(host.messagePorts.sent().size(), 1u);
  EXPECT_EQ(host.messagePorts.sent()[0].id, id("gMen"_4cc));
  CFData expected(32);
  const ProcessSerialNumber self = memory::MemoryProcesses::self();
  std::memcpy(expected.data() + 24, &self, 8);
  EXPECT_EQ(host.messagePorts.sent()[0].data, expected);
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
  EXPECT_EQ(BIMInitializeMessageReceiving(process), 0);
  EXPECT_TRUE(host.messagePorts.post(kOwnName, 202, bytes({"\0\0\0\0a", 5})));
  host.messagePorts.runPending();
  EXPECT_EQ(target.committed, u"a");
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
  EXPECT_EQ(BIM_SendMessageToUIServerWithReply(process, 1, 0, nullptr), -44);
  EXPECT_EQ(host.log.lines.back(), "IMK kCFMessagePortSuccess - result -44");
  memory::MemoryServer crowded;
  crowded.full = true;
  host.messagePorts.serve(kBasicMenuletPortName, crowded);
  EXPECT_EQ(BIMSendMessageToMenuletServer(process, 1), -2);
  app.server.silent = true;
  launchKnown();
  EXPECT_EQ(BIMSendMessageToAppServerWithReply(process, 1, 0), -2);
  const std::uint64_t start = host.clock.now();
  EXPECT_EQ(BIM_SendMessageToUIServerWithReply(process, 1, 0, nullptr), -2);
  EXPECT_NEAR(static_cast<double>(host.clock.now() - start) / 1e9, 1600, 1);
  EXPECT_TRUE(logged("IMK kCFMessagePortReceiveTimeout - result -2"));
  // The port stays cached when its peer has gone, and is replaced when another one serves.
  app.vanish(memory::Notice::Missed);
  EXPECT_EQ(BIM_SendMessageToUIServerWithReply(process, 1, 0, nullptr), kCFMessagePortIsInvalid);
  EXPECT_TRUE(logged("IMK CFMessagePortSendRequest - result -3"));
  app.server.silent = false;
  launchKnown();
  CFData reply{1};
  EXPECT_EQ(BIM_SendMessageToUIServerWithReply(process, 1, 0, &reply), 0);
}

}  // namespace
}  // namespace quorvane::test
