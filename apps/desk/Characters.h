#pragma once
// Characters as a terminal shows them.

#include <cstddef>
#include <string>
#include <string_view>

namespace quorvane::desk {

struct Character {
  char32_t value = 0;
  std::size_t units = 1;  ///< of UTF-16
};

/// `index` is inside the text. An unpaired surrogate stays what it is.
Character characterAt(std::u16string_view text, std::size_t index);
std::u32string toCharacters(std::u16string_view text);
/// Of ASCII.
std::u32string widened(std::string_view text);

/// The character itself; of a control character its picture, and U+FFFD of what can't be shown.
char32_t visible(char32_t character);
/// How many cells a character takes; 0: it stands on the one before it.
int cellsOf(char32_t character);
/// The column behind a character that stands at `column`: a tab goes to the next one of four.
int columnBehind(int column, char32_t character);

}  // namespace quorvane::desk
