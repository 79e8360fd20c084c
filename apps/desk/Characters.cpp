#include "apps/desk/Characters.h"

#include <algorithm>
#include <cwchar>

namespace quorvane::desk {
namespace {

constexpr char32_t kControlPictures = 0x2400;
constexpr char32_t kPictureOfDelete = 0x2421;
constexpr char32_t kReplacement = 0xFFFD;
constexpr int kTabStop = 4;

bool isHigh(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLow(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

Character characterAt(std::u16string_view text, std::size_t index) {
  const char32_t first = text[index];
  const bool pair = isHigh(text[index]) && index + 1 < text.size() && isLow(text[index + 1]);
  if (!pair) return {first, 1};
  return {0x10000 + ((first - 0xD800) << 10) + (text[index + 1] - 0xDC00U), 2};
}

std::u32string toCharacters(std::u16string_view text) {
  std::u32string result;
  for (std::size_t i = 0; i < text.size();) {
    const Character character = characterAt(text, i);
    result.push_back(character.value);
    i += character.units;
  }
  return result;
}

std::u32string widened(std::string_view text) { return {text.begin(), text.end()}; }

char32_t visible(char32_t character) {
  if (character < 32) return kControlPictures + character;
  if (character == 127) return kPictureOfDelete;
  return ::wcwidth(static_cast<wchar_t>(character)) < 0 ? kReplacement : character;
}

int cellsOf(char32_t character) {
  return std::max(0, ::wcwidth(static_cast<wchar_t>(visible(character))));
}

int columnBehind(int column, char32_t character) {
  if (character == U'\t') return column + kTabStop - column % kTabStop;
  return column + cellsOf(character);
}

}  // namespace quorvane::desk
