#include "apps/desk/DeskPlan.h"

#include <algorithm>
#include <cmath>

namespace quorvane::desk {
namespace {

constexpr int kSideColumns = 36;
constexpr int kMargin = 1;  // on both sides of the text

/// The nearest cell; half a cell belongs to the one before.
int nearest(double cells) { return static_cast<int>(std::ceil(cells - 0.5)); }

}  // namespace

CellRect DeskPlan::document() const { return {1, 0, rows_ - 2, columns_ - kSideColumns}; }

CellRect DeskPlan::side() const { return {1, columns_ - kSideColumns, rows_ - 2, kSideColumns}; }

NSRect DeskPlan::screen() const {
  const CellRect area = document();
  return {0, 0, static_cast<double>(area.columns) * kCellWidth,
          static_cast<double>(area.rows) * kCellHeight};
}

NSPoint DeskPlan::bottomLeftOf(int row, int column) const {
  const CellRect area = document();
  return {static_cast<double>(column - area.column) * kCellWidth,
          static_cast<double>(area.row + area.rows - 1 - row) * kCellHeight};
}

CellRect DeskPlan::cellsOf(const NSRect& rect) const {
  const CellRect area = document();
  const double top = (rect.y + rect.height) / kCellHeight;
  return {area.row + nearest(area.rows - top), area.column + nearest(rect.x / kCellWidth),
          std::max(1, nearest(rect.height / kCellHeight)),
          std::max(1, nearest(rect.width / kCellWidth))};
}

TextPlace DeskPlan::cellAt(const NSPoint& point) const {
  const CellRect area = document();
  return {area.row + static_cast<int>(std::floor(point.y / kCellHeight)),
          area.column + static_cast<int>(std::floor(point.x / kCellWidth))};
}

DeskText::DeskText(const DeskPlan& plan, std::u16string_view text, std::size_t caret)
    : area_(plan.document()), text_(text) {
  area_.column += kMargin;
  area_.columns -= 2 * kMargin;
  rows_ = breakLines(text_, area_.columns);
  hidden_ = std::max(0, desk::placeOf(text_, rows_, caret, area_.columns).row - area_.rows + 1);
}

TextPlace DeskText::placeOf(std::size_t index) const {
  const TextPlace place = desk::placeOf(text_, rows_, index, area_.columns);
  return {area_.row + place.row - hidden_, area_.column + place.column};
}

bool DeskText::shows(const TextPlace& place) const {
  return place.row >= area_.row && place.row < area_.row + area_.rows;
}

}  // namespace quorvane::desk
