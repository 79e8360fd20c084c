#include "hosts/script/ScriptText.h"

#include <bit>
#include <cstdint>

namespace quorvane {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void appendUnit(std::string& bytes, char16_t unit) {
  const auto append = [&](unsigned byte) { bytes.push_back(static_cast<char>(byte)); };
  if (unit < 0x80) {
    append(unit);
  } else if (unit < 0x800) {
    append(0xC0U | (unit >> 6));
    append(0x80U | (unit & 0x3FU));
  } else {
    append(0xE0U | (unit >> 12));
    append(0x80U | ((unit >> 6) & 0x3FU));
    append(0x80U | (unit & 0x3FU));
  }
}

/// Takes one character off `bytes`, or one byte that belongs to none.
char32_t takeCharacter(std::string_view& bytes) {
  const auto byteAt = [&](std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); };
  const std::uint8_t lead = byteAt(0);
  const auto length = static_cast<std::size_t>(lead < 0x80 ? 1 : std::countl_one(lead));
  if (length == 1 && lead < 0x80) {
    bytes.remove_prefix(1);
    return lead;
  }
  char32_t character = lead & (0x7FU >> length);
  bool valid = length >= 2 && length <= 4 && length <= bytes.size();
  for (std::size_t i = 1; valid && i < length; ++i) {
    valid = (byteAt(i) & 0xC0U) == 0x80;
    character = (character << 6) | (byteAt(i) & 0x3FU);
  }
  bytes.remove_prefix(valid ? length : 1);
  return valid && character <= 0x10FFFF ? character : kReplacement;
}

void appendCharacter(std::u16string& text, char32_t character) {
  if (character < 0x10000) {
    text.push_back(static_cast<char16_t>(character));
    return;
  }
  text.push_back(static_cast<char16_t>(0xD7C0 + (character >> 10)));
  text.push_back(static_cast<char16_t>(0xDC00 + (character & 0x3FF)));
}

}  // namespace

std::string toScriptText(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (const char16_t unit : text) appendUnit(bytes, unit);
  return bytes;
}

std::u16string fromScriptText(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size());
  while (!bytes.empty()) appendCharacter(text, takeCharacter(bytes));
  return text;
}

}  // namespace quorvane
