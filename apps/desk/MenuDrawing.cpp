#include "apps/desk/MenuDrawing.h"

#include <algorithm>

#include "apps/desk/Characters.h"
#include "apps/desk/TextDrawing.h"

namespace quorvane::desk {
namespace {

constexpr Look kGreyed{.faint = true};
constexpr Look kHighlightedLine{.reversed = true};
constexpr int kCheckColumns = 2;  // a mark and a blank before the title
constexpr int kHeadColumns = 2;   // a blank and a mark behind everything
constexpr int kGap = 2;           // before a key equivalent
constexpr int kFrame = 2;

int widthOf(const MenuLine& line) {
  const int keys = lengthOf(toCharacters(line.keyEquivalent));
  return kCheckColumns + lengthOf(toCharacters(line.title)) + (keys > 0 ? kGap + keys : 0) +
         kHeadColumns;
}

int widthOf(const MenuView& menu) {
  int width = 0;
  for (const MenuLine& line : menu.lines) width = std::max(width, widthOf(line));
  return width;
}

Look lookOf(const MenuView& menu, std::size_t line) {
  if (menu.highlighted == line) return kHighlightedLine;
  return menu.lines[line].enabled ? Look{} : kGreyed;
}

void drawLine(Canvas& canvas, const CellRect& rect, const MenuLine& line, Look look) {
  const int end = rect.column + rect.columns;
  canvas.fill(rect, line.separator ? U'\u2500' : U' ', look);
  if (line.separator) return;
  if (line.checked) canvas.write(rect.row, rect.column, end, U"\u2713", look);
  const std::u32string keys = toCharacters(line.keyEquivalent);
  const int keysColumn = end - kHeadColumns - lengthOf(keys);
  const int titleColumn = rect.column + kCheckColumns;
  canvas.write(rect.row, titleColumn, keysColumn,
               fitted(toCharacters(line.title), keysColumn - titleColumn), look);
  canvas.write(rect.row, keysColumn, end, keys, look);
  if (line.head) canvas.write(rect.row, end - 1, end, U"\u25B8", look);
}

/// The first line that shows, where there is room for so many.
int firstShown(const MenuView& menu, int room) {
  const int count = static_cast<int>(menu.lines.size());
  const int highlighted = static_cast<int>(menu.highlighted.value_or(0));
  return std::clamp(highlighted - room / 2, 0, std::max(0, count - room));
}

void drawMenu(Canvas& canvas, const CellRect& box, const MenuView& menu, int first) {
  const int room = box.rows - kFrame;
  const int right = box.column + box.columns;
  canvas.frame(box);
  for (int i = 0; i < room; ++i) {
    const auto line = static_cast<std::size_t>(first) + static_cast<std::size_t>(i);
    if (line >= menu.lines.size()) return;
    drawLine(canvas, {box.row + 1 + i, box.column + 1, 1, box.columns - kFrame}, menu.lines[line],
             lookOf(menu, line));
  }
  if (first > 0) canvas.write(box.row, right - 2, right, U"\u25B2");
  if (first + room < static_cast<int>(menu.lines.size())) {
    canvas.write(box.row + box.rows - 1, right - 2, right, U"\u25BC");
  }
}

/// All of `wanted` if it has room anywhere: moved left and up into the area, then cut.
CellRect movedInto(const CellRect& area, CellRect wanted) {
  wanted.column = std::min(wanted.column, area.column + area.columns - wanted.columns);
  wanted.row = std::min(wanted.row, area.row + area.rows - wanted.rows);
  wanted.column = std::max(wanted.column, area.column);
  wanted.row = std::max(wanted.row, area.row);
  return within(area, wanted);
}

}  // namespace

void drawMenus(Canvas& canvas, const DeskPlan& plan, const std::vector<MenuView>& menus) {
  const CellRect area{1, 0, plan.rows() - 2, plan.columns()};
  TextPlace corner{area.row, area.column};
  for (const MenuView& menu : menus) {
    const int rows = static_cast<int>(menu.lines.size()) + kFrame;
    const CellRect box = movedInto(area, {corner.row, corner.column, rows, widthOf(menu) + kFrame});
    const int first = firstShown(menu, box.rows - kFrame);
    drawMenu(canvas, box, menu, first);
    const int head = static_cast<int>(menu.highlighted.value_or(0)) - first;
    corner = {box.row + head, box.column + box.columns};
  }
}

}  // namespace quorvane::desk
