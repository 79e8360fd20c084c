#include "tools/checker/Scribbler.h"

#include <algorithm>
#include <array>
#include <vector>

namespace quorvane::checker {

namespace {

constexpr std::array<std::int32_t, 9> kMessages = {
    202,        220, 240, 250, 251, 7, -1,
    0x55706474,  // Updt
    0x67496E74,  // gInt
};
constexpr std::array<std::uint32_t, 8> kEdges = {0,   1,          383,        384,
                                                 385, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
constexpr std::uint32_t kLargestPayload = 64 * 1024;

}  // namespace

std::uint32_t Scribbler::below(std::uint32_t limit) {
  return static_cast<std::uint32_t>(random_() % limit);
}

std::uint32_t Scribbler::anyNumber() {
  return below(2) == 0 ? kEdges[below(kEdges.size())] : static_cast<std::uint32_t>(random_());
}

void Scribbler::scribbleBytes(std::span<std::uint8_t> bytes) {
  for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random_());
}

void Scribbler::lieAboutText() {
  for (std::size_t offset = 0; offset < 8 && offset + 4 <= text_.size(); offset += 4) {
    const std::uint32_t number = anyNumber();
    for (std::size_t i = 0; i < 4; ++i) {
      text_[offset + i] = static_cast<std::uint8_t>(number >> (24 - 8 * i));
    }
  }
}

void Scribbler::sendGarbage() {
  if (!port_.find()) return;
  std::vector<std::uint8_t> payload(below(16) == 0 ? below(kLargestPayload + 1) : below(16));
  scribbleBytes(payload);
  // Half of them read as text, with any count.
  if (below(2) == 0) std::ranges::for_each(payload, [](std::uint8_t& byte) { byte &= 0x7F; });
  port_.send(kMessages[below(kMessages.size())], payload);
}

void Scribbler::maybe() {
  switch (below(40)) {
    case 0:
      tool_[below(static_cast<std::uint32_t>(tool_.size()))] = anyNumber();
      break;
    case 1:
      scribbleBytes(command_);
      break;
    case 2:
      scribbleBytes(text_);
      break;
    case 3:
      lieAboutText();
      break;
    case 4:
      sendGarbage();
      break;
    default:
      break;
  }
}

}  // namespace quorvane::checker
