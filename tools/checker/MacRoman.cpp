#include "tools/checker/MacRoman.h"

#include <array>
#include <string_view>

namespace quorvane::checker {

namespace {

constexpr std::uint8_t kReturn = 13;
constexpr std::array<std::string_view, 6> kSmartChars = {
    "\u2013", "\u2014", "\u201C", "\u201D", "\u2018", "\u2019",
};

bool isReplaced(std::span<const std::uint8_t> bytes, std::size_t index) {
  return index + 1 < bytes.size() && isDashOfHyphens(bytes[index], bytes[index + 1]);
}

}  // namespace

std::size_t documentLength(std::span<const std::uint8_t> bytes) {
  std::size_t length = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) length += isReplaced(bytes, i) ? 0 : 1;
  return length;
}

std::optional<std::string> documentText(std::span<const std::uint8_t> bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const std::uint8_t byte = bytes[i];
    if (isReplaced(bytes, i)) continue;
    if (isSmartChar(byte)) {
      text += kSmartChars[byte - kFirstSmartChar];
    } else if (byte < 128) {
      text += byte == kReturn ? '\n' : static_cast<char>(byte);
    } else {
      return std::nullopt;
    }
  }
  return text;
}

}  // namespace quorvane::checker
