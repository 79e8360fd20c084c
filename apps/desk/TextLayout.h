#pragma once
// Where each character of a text stands in a text field of cells.

#include <cstddef>
#include <string_view>
#include <vector>

namespace quorvane::desk {

/// UTF-16 units of the text. The line feed that ends a row belongs to none.
struct TextRow {
  std::size_t start = 0;
  std::size_t end = 0;
};

/// Counted from the start of the text.
struct TextPlace {
  int row = 0;
  int column = 0;
};

/// Lines are broken behind a space where there is one. A space that finds no room hangs over the
/// edge. There is always a last row; it may be empty.
std::vector<TextRow> breakLines(std::u16string_view text, int columns);

/// Of the character at `index`, or of the end of the text. What hangs over the edge stands in the
/// column behind it.
TextPlace placeOf(std::u16string_view text, const std::vector<TextRow>& rows, std::size_t index,
                  int columns);

}  // namespace quorvane::desk
