#include "apps/desk/TextDrawing.h"

#include <algorithm>

#include "apps/desk/Characters.h"
#include "apps/desk/TextLayout.h"

namespace quorvane::desk {
namespace {

constexpr char32_t kEllipsis = U'\u2026';

std::u32string cut(std::u32string_view text, int columns) {
  while (!text.empty() && (text.back() == U' ' || lengthOf(text) >= columns)) text.remove_suffix(1);
  return std::u32string(text) + kEllipsis;
}

}  // namespace

int lengthOf(std::u32string_view text) {
  int cells = 0;
  for (const char32_t character : text) cells += cellsOf(character);
  return cells;
}

std::u32string fitted(std::u32string_view text, int columns) {
  return lengthOf(text) <= columns ? std::u32string(text) : cut(text, columns);
}

int writeLines(Canvas& canvas, const CellRect& rect, const std::u16string& text, Look look) {
  const std::vector<TextRow> lines = breakLines(text, rect.columns);
  const int rows = std::min(rect.rows, static_cast<int>(lines.size()));
  for (int row = 0; row < rows; ++row) {
    const TextRow& line = lines[static_cast<std::size_t>(row)];
    const auto part =
        toCharacters(std::u16string_view(text).substr(line.start, line.end - line.start));
    const bool last = row + 1 == rect.rows && lines.size() > static_cast<std::size_t>(rows);
    canvas.write(rect.row + row, rect.column, rect.column + rect.columns,
                 last ? cut(part, rect.columns) : part, look);
  }
  return rows;
}

}  // namespace quorvane::desk
