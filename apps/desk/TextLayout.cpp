#include "apps/desk/TextLayout.h"

#include <algorithm>

#include "apps/desk/Characters.h"

namespace quorvane::desk {
namespace {

struct RowEnd {
  std::size_t end;
  std::size_t next;  ///< where the next row starts; behind the text: there is none
};

/// The row that starts at `start`.
RowEnd endOfRow(std::u16string_view text, std::size_t start, int columns) {
  std::size_t behindSpace = start;
  int column = 0;
  for (std::size_t i = start; i < text.size();) {
    const Character character = characterAt(text, i);
    if (character.value == U'\n') return {i, i + 1};
    const bool space = character.value == U' ';
    column = columnBehind(column, character.value);
    if (column > columns && !space && i > start) {
      const std::size_t end = behindSpace > start ? behindSpace : i;
      return {end, end};
    }
    i += character.units;
    if (space) behindSpace = i;
  }
  return {text.size(), text.size() + 1};
}

}  // namespace

std::vector<TextRow> breakLines(std::u16string_view text, int columns) {
  std::vector<TextRow> rows;
  for (std::size_t start = 0; start <= text.size();) {
    const RowEnd row = endOfRow(text, start, columns);
    rows.push_back({start, row.end});
    start = row.next;
  }
  return rows;
}

TextPlace placeOf(std::u16string_view text, const std::vector<TextRow>& rows, std::size_t index,
                  int columns) {
  const auto behind = std::ranges::upper_bound(rows, index, {}, &TextRow::start);
  const auto row = behind == rows.begin() ? behind : behind - 1;
  int column = 0;
  for (std::size_t i = row->start; i < index && i < text.size();) {
    const Character character = characterAt(text, i);
    column = columnBehind(column, character.value);
    i += character.units;
  }
  return {static_cast<int>(row - rows.begin()), std::min(column, columns)};
}

}  // namespace quorvane::desk
