#include "hosts/desktop/MessageFraming.h"

namespace quorvane::desktop {
namespace {

void putBigEndian(std::uint8_t* out, std::uint32_t value) {
  for (int i = 0; i < 4; ++i) out[i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
}

std::uint32_t getBigEndian(std::span<const std::uint8_t, 4> bytes) {
  std::uint32_t value = 0;
  for (const std::uint8_t byte : bytes) value = (value << 8) | byte;
  return value;
}

}  // namespace

std::array<std::uint8_t, kRequestHeaderSize> encodeRequestHeader(std::int32_t messageId,
                                                                 bool replyWanted) {
  std::array<std::uint8_t, kRequestHeaderSize> header;
  putBigEndian(header.data(), static_cast<std::uint32_t>(messageId));
  putBigEndian(header.data() + 4, replyWanted ? kRequestReplyWanted : 0);
  return header;
}

std::optional<Request> decodeRequest(std::span<const std::uint8_t> packet) {
  if (packet.size() < kRequestHeaderSize || packet.size() > kRequestSizeLimit) return {};
  const std::uint32_t id = getBigEndian(packet.first<4>());
  const std::uint32_t flags = getBigEndian(packet.subspan<4, 4>());
  if ((flags & ~kRequestReplyWanted) != 0) return {};
  return Request{static_cast<std::int32_t>(id), (flags & kRequestReplyWanted) != 0,
                 packet.subspan(kRequestHeaderSize)};
}

}  // namespace quorvane::desktop
