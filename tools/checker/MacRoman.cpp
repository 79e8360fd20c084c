#include "tools/checker/MacRoman.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "src/base/Text.h"

namespace quorvane::checker {

namespace {

constexpr std::uint8_t kReturn = 13;
constexpr std::uint8_t kUnknownLetter = 214;  // for one whose own byte would be a dash or a quote
constexpr std::uint8_t kHalfOfPair = 0xF0;
constexpr std::array<std::string_view, 6> kSmartChars = {
    "\u2013", "\u2014", "\u201C", "\u201D", "\u2018", "\u2019",
};

std::uint8_t sessionByte(char16_t unit) {
  constexpr std::u16string_view kSmart = u"\u2013\u2014\u201C\u201D\u2018\u2019";
  if (unit == u'\n') return kReturn;
  if (unit < 128) return static_cast<std::uint8_t>(unit);
  if (const auto smart = kSmart.find(unit); smart != kSmart.npos) {
    return static_cast<std::uint8_t>(kFirstSmartChar + smart);
  }
  const std::uint8_t byte = firstUtf8Byte({&unit, 1});  // as for a letter that was typed
  if (byte == 0) return kHalfOfPair;
  return isSmartChar(byte) ? kUnknownLetter : byte;
}

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

std::vector<std::uint8_t> sessionBytes(std::u16string_view text) {
  std::vector<std::uint8_t> bytes(text.size());
  std::ranges::transform(text, bytes.begin(), sessionByte);
  return bytes;
}

}  // namespace quorvane::checker
