#include "hosts/desktop/MessageFraming.h"

#include "src/base/BigEndian.h"

namespace quorvane::desktop {
std::array<std::uint8_t, kRequestHeaderSize> encodeRequestHeader(std::int32_t messageId,
                                                                 bool replyWanted) {
  std::array<std::uint8_t, kRequestHeaderSize> header;
  putBigEndian(header, 0, static_cast<std::uint32_t>(messageId));
  putBigEndian(header, 4, replyWanted ? kRequestReplyWanted : 0);
  return header;
}

std::optional<Request> decodeRequest(std::span<const std::uint8_t> packet) {
  if (packet.size() < kRequestHeaderSize || packet.size() > kRequestSizeLimit) return {};
  const auto id = bigEndianNumber<std::uint32_t>(packet);
  const auto flags = bigEndianNumber<std::uint32_t>(packet, 4);
  if ((flags & ~kRequestReplyWanted) != 0) return {};
  return Request{static_cast<std::int32_t>(id), (flags & kRequestReplyWanted) != 0,
                 packet.subspan(kRequestHeaderSize)};
}

}  // namespace quorvane::desktop
