#include "src/base/Text.h"

namespace quorvane {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

char32_t takeCharacter(std::u16string_view& rest) {
  const char16_t first = rest.front();
  rest.remove_prefix(1);
  if (isHighSurrogate(first) && !rest.empty() && isLowSurrogate(rest.front())) {
    const char16_t second = rest.front();
    rest.remove_prefix(1);
    return 0x10000 + ((char32_t{first} - 0xD800) << 10) + (char32_t{second} - 0xDC00);
  }
  return isHighSurrogate(first) || isLowSurrogate(first) ? kReplacement : char32_t{first};
}

}  // namespace

std::size_t takeUtf8(std::u16string_view& rest, std::array<char, 4>& utf8) {
  const char32_t character = takeCharacter(rest);
  const std::size_t count = character < 0x80      ? 1
                            : character < 0x800   ? 2
                            : character < 0x10000 ? 3
                                                  : 4;
  constexpr std::array<unsigned, 5> kLead{0, 0, 0xC0, 0xE0, 0xF0};
  char32_t left = character;
  for (std::size_t i = count - 1; i > 0; --i) {
    utf8[i] = static_cast<char>(0x80 | (left & 0x3F));
    left >>= 6;
  }
  utf8[0] = static_cast<char>(kLead[count] | left);
  return count;
}

std::uint8_t firstUtf8Byte(std::u16string_view text) {
  if (text.empty()) return 0;
  std::u16string_view rest = text;
  std::array<char, 4> utf8{};
  takeUtf8(rest, utf8);
  const bool unpaired = text.size() - rest.size() == 1 && (text.front() & 0xF800) == 0xD800;
  return unpaired ? 0 : static_cast<std::uint8_t>(utf8[0]);
}

bool hasUtf8Form(std::u16string_view text) {
  while (!text.empty()) {
    const bool surrogate = isHighSurrogate(text.front()) || isLowSurrogate(text.front());
    const std::size_t before = text.size();
    takeCharacter(text);
    if (surrogate && before - text.size() == 1) return false;
  }
  return true;
}

std::string toUtf8(std::u16string_view text) {
  std::string result;
  std::array<char, 4> utf8{};
  while (!text.empty()) result.append(utf8.data(), takeUtf8(text, utf8));
  return result;
}

}  // namespace quorvane
