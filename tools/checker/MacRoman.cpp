#include "tools/checker/MacRoman.h"

#include <array>
#include <string_view>

namespace quorvane::checker {

namespace {

constexpr std::uint8_t kReturn = 13;
constexpr std::array<std::string_view, 6> kSmartChars = {
    "\u2013", "\u2014", "\u201C", "\u201D", "\u2018", "\u2019",
};

}  // namespace

std::optional<std::string> documentText(std::span<const std::uint8_t> bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes) {
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
