#pragma once
// The packets of the message ports, without sockets. One packet is one message.
//
//   request   0  message id, 4 bytes, big-endian
//             4  flags, 4 bytes, big-endian: bit 0 a reply is wanted, the others 0
//             8  payload, 0 to 65536 bytes
//   reply     0  payload, 0 to 65536 bytes

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/MessagePorts.h"

namespace quorvane::desktop {

inline constexpr std::size_t kRequestHeaderSize = 8;
inline constexpr std::size_t kRequestSizeLimit = kRequestHeaderSize + kMessagePayloadLimit;
inline constexpr std::uint32_t kRequestReplyWanted = 1;

struct Request {
  std::int32_t messageId = 0;
  bool replyWanted = false;
  std::span<const std::uint8_t> payload;  ///< points into the packet
};

std::array<std::uint8_t, kRequestHeaderSize> encodeRequestHeader(std::int32_t messageId,
                                                                 bool replyWanted);
/// Empty where the packet is too short or too long, or has unknown flags.
std::optional<Request> decodeRequest(std::span<const std::uint8_t> packet);

}  // namespace quorvane::desktop
