// What the main application says of itself when it is asked.

#include <cstring>

#include "src/bridge/QBIMLaunchServer.h"

namespace quorvane {
namespace {

constexpr FourCharCode kFocusWindow = "pFWw"_4cc;
constexpr std::int32_t kWaitForReply = 3;
constexpr std::int32_t kReplyTimeout = 150;

}  // namespace

OSStatus GetQuorvaneProcessTargetid(Instance& instance) {
  auto& target = instance.state<LaunchServerState>().QorvTargetID;
  target.clear();
  ProcessSerialNumber psn;
  if (get_quorvane_psn(instance, psn, nullptr) == 0) return procNotFound;
  target.resize(sizeof psn);
  std::memcpy(target.data(), &psn, sizeof psn);
  return noErr;
}

OSStatus GetAppProperty(Instance& instance, FourCharCode property,
                        std::vector<std::uint8_t>& reply) {
  const auto& target = instance.state<LaunchServerState>().QorvTargetID;
  return instance.platform().appleEvents.AESendGetData(property, {typeProcessSerialNumber, target},
                                                       kWaitForReply, kReplyTimeout, reply);
}

std::uint8_t Get_QorvFocusWindowFlag(Instance& instance) {
  std::vector<std::uint8_t> reply;
  const bool answered = GetQuorvaneProcessTargetid(instance) == noErr &&
                        GetAppProperty(instance, kFocusWindow, reply) == noErr;
  return answered && !reply.empty() ? reply.front() : std::uint8_t{0};
}

}  // namespace quorvane
