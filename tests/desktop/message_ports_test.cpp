// Message ports of the desktop host under clients and servers that die, lie or say nothing.

#include <gtest/gtest.h>

#include "hosts/desktop/MessageFraming.h"
#include "hosts/desktop/PacketSocket.h"
#include "tests/support/DesktopStage.h"

namespace quorvane::desktop {
namespace {

class DesktopMessagePorts : public testing::Test {
 protected:
  void serveHere(CFData reply = {}) {
    auto& loop = stage_.host().runLoop();
    const auto port = ports_.CFMessagePortCreateLocal("port", [=, this](auto id, const CFData*) {
      received_.push_back(id);
      return std::optional(reply);
    });
    ASSERT_NE(port, nullptr);
    loop.CFRunLoopAddSource(*loop.CFRunLoopGetCurrent(),
                            ports_.CFMessagePortCreateRunLoopSource(port));
  }
  std::int32_t ask(Seconds timeout, CFData& reply) {
    const auto remote = ports_.CFMessagePortCreateRemote("port");
    if (remote == nullptr) return 1;
    return ports_.CFMessagePortSendRequest(*remote, 5, {}, timeout, timeout, &reply);
  }
  Descriptor client() { return connectTo(stage_.runtimeFile("port")); }
  static bool put(const Descriptor& socket, std::vector<std::uint8_t> packet) {
    return sendPacket(socket.get(), packet, {}) == Transfer::Done;
  }
  static bool takeRequest(const Descriptor& server) {
    std::vector<std::uint8_t> buffer(64);
    std::size_t size = 0;
    return receiveRequest(server.get(), buffer, size) == Transfer::Done;
  }
  bool isClosedFor(const Descriptor& socket) {
    std::vector<std::uint8_t> buffer(kRequestSizeLimit);
    std::size_t size = 0;
    return receiveReply(socket.get(), buffer, size) == Transfer::Gone;
  }

  tests::DesktopStage stage_;
  quorvane::MessagePorts& ports_ = stage_.platform().messagePorts;
  std::vector<std::int32_t> received_;
};

TEST_F(DesktopMessagePorts, AClientThatSendsNoMessageIsDroppedAndTheOthersAreNot) {
  serveHere();
  const std::vector<std::vector<std::uint8_t>> bad{
      {1, 2, 3}, {}, {0, 0, 0, 1, 0xFF, 0, 0, 0}, std::vector<std::uint8_t>(kRequestSizeLimit + 1)};
  const Descriptor good = client();
  for (const auto& packet : bad) {
    const Descriptor hostile = client();
    ASSERT_TRUE(put(hostile, packet));
    EXPECT_TRUE(stage_.eventually([&] { return isClosedFor(hostile); })) << packet.size();
  }
  EXPECT_TRUE(put(good, {0, 0, 0, 9, 0, 0, 0, 0}));
  stage_.turn();
  EXPECT_EQ(received_, std::vector<std::int32_t>{9});
}

TEST_F(DesktopMessagePorts, SilentClientsAndThoseWhoNeverReadHoldNobodyUp) {
  serveHere(CFData(kMessagePayloadLimit, 1));
  std::vector<Descriptor> silent;
  for (int i = 0; i < 100; ++i) {
    silent.push_back(client());
    stage_.turn();
  }
  EXPECT_TRUE(isClosedFor(silent.front())) << "the number of clients must be bounded";
  const Descriptor greedy = client();
  for (int i = 0; i < 50 && put(greedy, {0, 0, 0, 1, 0, 0, 0, 1}); ++i) stage_.turn();
  CFData reply;
  EXPECT_EQ(ask(Seconds(5), reply), kCFMessagePortSuccess);
  EXPECT_EQ(reply.size(), kMessagePayloadLimit);
}

TEST_F(DesktopMessagePorts, ASendWithoutReplyNeverBlocksLongerThanItsTimeout) {
  const auto deaf = ports_.CFMessagePortCreateLocal("deaf", [](auto, auto) { return CFData(); });
  const auto remote = ports_.CFMessagePortCreateRemote("deaf");
  const CFData data(kMessagePayloadLimit);
  std::int32_t status = kCFMessagePortSuccess;
  for (int i = 0; i < 1000 && status == kCFMessagePortSuccess; ++i) {
    status = ports_.CFMessagePortSendRequest(*remote, 1, data, Seconds(0), Seconds(0), nullptr);
  }
  EXPECT_EQ(status, kCFMessagePortSendTimeout);
  EXPECT_EQ(ports_.CFMessagePortSendRequest(*remote, 1, data, Seconds(0.05), Seconds(0), nullptr),
            kCFMessagePortSendTimeout);
}

TEST_F(DesktopMessagePorts, AnAnswerThatComesTooLateIsNotTakenForTheNextOne) {
  const Descriptor listener = listenAt(stage_.runtimeFile("port"));
  CFData reply;
  EXPECT_EQ(ask(Seconds(0.02), reply), kCFMessagePortReceiveTimeout);
  const Descriptor late = acceptFrom(listener.get());
  put(late, {'l', 'a', 't', 'e'});
  const Descriptor next = acceptFrom(listener.get());
  put(next, {'u', 'n', 'a', 's', 'k', 'e', 'd'});
  stage_.turn();
  const auto answering = stage_.host().runLoop().watch(next.get(), G_IO_IN, [&](GIOCondition) {
    if (takeRequest(next)) put(next, {'o', 'k'});
  });
  EXPECT_EQ(ask(Seconds(5), reply), kCFMessagePortSuccess);
  EXPECT_EQ(reply, (CFData{'o', 'k'}));
}

TEST_F(DesktopMessagePorts, AnEmptyAnswerCountsThoughTheServerHasLeft) {
  const Descriptor listener = listenAt(stage_.runtimeFile("port"));
  const auto answering = stage_.host().runLoop().watch(listener.get(), G_IO_IN, [&](GIOCondition) {
    const Descriptor server = acceptFrom(listener.get());
    EXPECT_TRUE(takeRequest(server));
    EXPECT_TRUE(put(server, {}));
  });
  CFData reply{1};
  EXPECT_EQ(ask(Seconds(5), reply), kCFMessagePortSuccess);
  EXPECT_TRUE(reply.empty());
}

TEST_F(DesktopMessagePorts, AServerThatIsKilledEndsTheWaitAndItsSocketIsTakenOver) {
  auto server = std::make_unique<tests::Child>([this] { serveHere(); });
  EXPECT_EQ(ports_.CFMessagePortCreateLocal("port", nullptr), nullptr) << "it is served";
  const auto killing = stage_.host().runLoop().addTimer(std::chrono::milliseconds(20), [&] {
    server->kill();
    return false;
  });
  CFData reply;
  EXPECT_EQ(ask(Seconds(1600), reply), kCFMessagePortIsInvalid);
  EXPECT_TRUE(std::filesystem::exists(stage_.runtimeFile("port")));
  EXPECT_EQ(ports_.CFMessagePortCreateRemote("port"), nullptr);
  serveHere({'n'});
  EXPECT_EQ(ask(Seconds(5), reply), kCFMessagePortSuccess);
  EXPECT_EQ(reply, CFData{'n'});
  stage_.closeHost();
  EXPECT_FALSE(std::filesystem::exists(stage_.runtimeFile("port")));
}

TEST_F(DesktopMessagePorts, PeersThatHaveGoneLeaveNoSocketOpen) {
  using Entries = std::filesystem::directory_iterator;
  const auto descriptors = [] { return std::distance(Entries("/proc/self/fd"), Entries()); };
  const auto before = descriptors();
  for (const std::string_view name : {"one", "two", "three"}) {
    const Descriptor server = listenAt(stage_.runtimeFile(name));
    EXPECT_NE(ports_.CFMessagePortCreateRemote(name), nullptr);
  }
  stage_.turn();
  EXPECT_EQ(ports_.CFMessagePortCreateRemote("four"), nullptr);
  EXPECT_EQ(descriptors(), before);
}

TEST_F(DesktopMessagePorts, ANameThatIsNoFileNameIsNotServed) {
  for (const std::string& name : {std::string(), std::string("../port"), std::string(".lock"),
                                  std::string(200, 'n'), std::string("a\0b", 3)}) {
    EXPECT_EQ(ports_.CFMessagePortCreateLocal(name, nullptr), nullptr) << name;
    EXPECT_EQ(ports_.CFMessagePortCreateRemote(name), nullptr) << name;
  }
}

}  // namespace
}  // namespace quorvane::desktop
