#include "apps/desk/Canvas.h"

#include <algorithm>

#include "apps/desk/Characters.h"

namespace quorvane::desk {
namespace {

constexpr std::size_t kMostInACell = 5;  // a terminal library holds no more

}  // namespace

CellRect within(const CellRect& area, CellRect rect) {
  const int right = std::min(rect.column + rect.columns, area.column + area.columns);
  const int bottom = std::min(rect.row + rect.rows, area.row + area.rows);
  rect.column = std::max(rect.column, area.column);
  rect.row = std::max(rect.row, area.row);
  rect.columns = std::max(0, right - rect.column);
  rect.rows = std::max(0, bottom - rect.row);
  return rect;
}

Canvas::Canvas(int rows, int columns) : rows_(rows), columns_(columns), cells_(index(rows, 0)) {}

int Canvas::write(int row, int column, int end, std::u32string_view text, Look look) {
  for (const char32_t character : text) {
    const int cells = cellsOf(character);
    if (column + cells > end) break;
    put(row, column, visible(character), cells, look);
    column += cells;
  }
  return column;
}

void Canvas::fill(const CellRect& rect, char32_t character, Look look) {
  for (int row = rect.row; row < rect.row + rect.rows; ++row) {
    const int end = rect.column + rect.columns;
    for (int column = rect.column; column < end; ++column) put(row, column, character, 1, look);
  }
}

void Canvas::frame(const CellRect& rect) {
  const int right = rect.column + rect.columns - 1;
  const int bottom = rect.row + rect.rows - 1;
  fill(rect, U' ');
  for (const int row : {rect.row, bottom}) fill({row, rect.column, 1, rect.columns}, U'\u2500');
  for (const int side : {rect.column, right}) fill({rect.row, side, rect.rows, 1}, U'\u2502');
  fill({rect.row, rect.column, 1, 1}, U'\u250C');
  fill({rect.row, right, 1, 1}, U'\u2510');
  fill({bottom, rect.column, 1, 1}, U'\u2514');
  fill({bottom, right, 1, 1}, U'\u2518');
}

void Canvas::put(int row, int column, char32_t character, int cells, Look look) {
  if (cells == 0) {
    if (!holds(row, column - 1)) return;
    std::u32string& before = cells_[index(row, column - 1)].text;
    if (!before.empty() && before.size() < kMostInACell) before.push_back(character);
    return;
  }
  if (!holds(row, column) || !holds(row, column + cells - 1)) return;
  cells_[index(row, column)] = {std::u32string(1, character), look};
  if (cells == 2) cells_[index(row, column + 1)] = {U"", look};
}

}  // namespace quorvane::desk
