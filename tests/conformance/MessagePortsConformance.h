#pragma once
// What every host's MessagePorts and RunLoop must do.

#include <vector>

#include "tests/conformance/HostStage.h"

namespace quorvane::conformance {

class MessagePortsConformance : public HostConformance {
 protected:
  struct Received {
    std::int32_t id;
    std::optional<CFData> data;
    bool operator==(const Received&) const = default;
  };

  std::shared_ptr<CFMessagePort> serve(std::string_view name, CFMessagePortCallBack callback) {
    auto port = ports_.CFMessagePortCreateLocal(name, std::move(callback));
    if (port == nullptr) return nullptr;
    RunLoop& loop = platform_.runLoop;
    loop.CFRunLoopAddSource(*loop.CFRunLoopGetCurrent(),
                            ports_.CFMessagePortCreateRunLoopSource(port));
    return port;
  }
  CFMessagePortCallBack recording(std::optional<CFData> reply) {
    return [this, reply](std::int32_t id, const CFData* data) {
      received_.push_back({id, data == nullptr ? std::nullopt : std::optional(*data)});
      return reply;
    };
  }
  std::int32_t send(std::string_view name, std::int32_t id, const CFData& data) {
    const auto remote = ports_.CFMessagePortCreateRemote(name);
    if (remote == nullptr) return 1;
    return ports_.CFMessagePortSendRequest(*remote, id, data, Seconds(0), Seconds(0), nullptr);
  }
  std::int32_t ask(std::string_view name, std::int32_t id, const CFData& data, CFData& reply) {
    const auto remote = ports_.CFMessagePortCreateRemote(name);
    if (remote == nullptr) return 1;
    return ports_.CFMessagePortSendRequest(*remote, id, data, Seconds(10), Seconds(10), &reply);
  }

  MessagePorts& ports_ = platform_.messagePorts;
  std::vector<Received> received_;
};

TEST_P(MessagePortsConformance, WhatIsSentWithoutReplyComesInOrderWhenTheLoopTurns) {
  EXPECT_EQ(ports_.CFMessagePortCreateRemote("own"), nullptr);
  serve("own", recording(std::nullopt));
  const CFData largest(kMessagePayloadLimit, 0x5A);
  EXPECT_EQ(send("own", 202, {0, 0, 0, 1, 'a'}), kCFMessagePortSuccess);
  EXPECT_EQ(send("own", -1, {}), kCFMessagePortSuccess);
  EXPECT_TRUE(received_.empty());
  stage_->turn();
  EXPECT_EQ(send("own", 0x494d7174, largest), kCFMessagePortSuccess);
  EXPECT_EQ(send("own", 1, CFData(kMessagePayloadLimit + 1)), kCFMessagePortTransportError);
  stage_->turn();
  const std::vector<Received> expected{
      {202, CFData{0, 0, 0, 1, 'a'}}, {-1, std::nullopt}, {0x494d7174, largest}};
  EXPECT_EQ(received_, expected);
}

TEST_P(MessagePortsConformance, AWaitingSendGetsTheReplyOrAnEmptyOne) {
  stage_->serveElsewhere("echo", [](std::int32_t, const CFData* data) -> std::optional<CFData> {
    return data == nullptr ? std::nullopt : std::optional(*data);
  });
  CFData reply{9};
  EXPECT_EQ(ask("echo", 1, {1, 2, 3}, reply), kCFMessagePortSuccess);
  EXPECT_EQ(reply, (CFData{1, 2, 3}));
  EXPECT_EQ(ask("echo", 2, CFData(kMessagePayloadLimit, 7), reply), kCFMessagePortSuccess);
  EXPECT_EQ(reply, CFData(kMessagePayloadLimit, 7));
  EXPECT_EQ(ask("echo", 3, {}, reply), kCFMessagePortSuccess);
  EXPECT_TRUE(reply.empty());
}

TEST_P(MessagePortsConformance, ACallbackThatWaitsStillGetsMessages) {
  std::vector<std::int32_t> order;
  serve("own", [&](std::int32_t id, const CFData*) -> std::optional<CFData> {
    CFData reply;
    if (id == 1) {
      EXPECT_EQ(ask("server", 5, {}, reply), kCFMessagePortSuccess);
    }
    order.push_back(id);
    return std::nullopt;
  });
  stage_->serveElsewhere("server", [&](std::int32_t, const CFData*) -> std::optional<CFData> {
    CFData reply;
    EXPECT_EQ(ask("own", 2, {}, reply), kCFMessagePortSuccess);
    return std::nullopt;
  });
  EXPECT_EQ(send("own", 1, {}), kCFMessagePortSuccess);
  stage_->turn();
  EXPECT_EQ(order, (std::vector<std::int32_t>{2, 1}));
}

TEST_P(MessagePortsConformance, WhatIsSentBeforeTheAnswerIsHandledBeforeIt) {
  serve("own", recording(std::nullopt));
  stage_->serveElsewhere("server", [&](std::int32_t id, const CFData*) -> std::optional<CFData> {
    EXPECT_EQ(send("own", id, {}), kCFMessagePortSuccess);
    return std::nullopt;
  });
  CFData reply;
  EXPECT_EQ(ask("server", 1, {}, reply), kCFMessagePortSuccess);
  EXPECT_EQ(received_, (std::vector<Received>{{1, std::nullopt}}));
  EXPECT_EQ(ask("server", 2, {}, reply), kCFMessagePortSuccess);
  EXPECT_EQ(received_, (std::vector<Received>{{1, std::nullopt}, {2, std::nullopt}}));
}

TEST_P(MessagePortsConformance, ANameIsServedOnce) {
  const auto port = serve("own", recording(std::nullopt));
  ASSERT_NE(port, nullptr);
  EXPECT_EQ(ports_.CFMessagePortCreateLocal("own", recording(std::nullopt)), port);
  stage_->serveElsewhere("taken", recording(std::nullopt));
  EXPECT_EQ(ports_.CFMessagePortCreateLocal("taken", recording(std::nullopt)), nullptr);
  EXPECT_EQ(ports_.CFMessagePortSendRequest(*port, 1, {}, Seconds(0), Seconds(0), nullptr),
            kCFMessagePortIsInvalid);
}

TEST_P(MessagePortsConformance, ARemotePortIsTheSameObjectUntilItsPeerDies) {
  stage_->serveElsewhere("server", recording(CFData{}));
  const auto remote = ports_.CFMessagePortCreateRemote("server");
  ASSERT_NE(remote, nullptr);
  CFData reply;
  EXPECT_EQ(ask("server", 1, {}, reply), kCFMessagePortSuccess);
  EXPECT_EQ(ports_.CFMessagePortCreateRemote("server"), remote);
  stage_->stopElsewhere("server");
  EXPECT_EQ(ports_.CFMessagePortSendRequest(*remote, 2, {}, Seconds(0), Seconds(0), nullptr),
            kCFMessagePortIsInvalid);
  EXPECT_EQ(ports_.CFMessagePortSendRequest(*remote, 2, {}, Seconds(10), Seconds(10), &reply),
            kCFMessagePortIsInvalid);
  EXPECT_EQ(ports_.CFMessagePortCreateRemote("server"), nullptr);
  stage_->serveElsewhere("server", recording(CFData{}));
  EXPECT_EQ(ask("server", 3, {}, reply), kCFMessagePortSuccess);
  EXPECT_NE(ports_.CFMessagePortCreateRemote("server"), remote);
  EXPECT_EQ(received_, (std::vector<Received>{{1, std::nullopt}, {3, std::nullopt}}));
}

TEST_P(MessagePortsConformance, ASilentServerEndsAWaitAtItsTimeout) {
  stage_->serveElsewhere("silent", nullptr);
  const auto remote = ports_.CFMessagePortCreateRemote("silent");
  ASSERT_NE(remote, nullptr);
  CFData reply;
  EXPECT_EQ(ports_.CFMessagePortSendRequest(*remote, 1, {}, Seconds(0.05), Seconds(0.05), &reply),
            kCFMessagePortReceiveTimeout);
  EXPECT_EQ(ports_.CFMessagePortSendRequest(*remote, 2, {}, Seconds(0), Seconds(0), nullptr),
            kCFMessagePortSuccess);
}

}  // namespace quorvane::conformance
