#include "apps/desk/WindowDrawing.h"

#include <algorithm>

#include "apps/desk/Characters.h"
#include "apps/desk/TextDrawing.h"

namespace quorvane::desk {
namespace {

constexpr int kAround = 2;  // cells: the frame and a blank, on each side
constexpr Look kWindowTitle{.bold = true};

/// A blank on either side, in the frame.
void writeInFrame(Canvas& canvas, const CellRect& box, int row, const std::u16string& text) {
  if (text.empty()) return;
  const std::u32string label = fitted(U' ' + toCharacters(text) + U' ', box.columns - kAround);
  canvas.write(row, box.column + 1, box.column + box.columns - 1, label, kWindowTitle);
}

}  // namespace

void drawWindow(Canvas& canvas, const DeskPlan& plan, const checker::WindowText& window) {
  const CellRect area{1, 0, plan.rows() - 2, plan.columns()};
  const CellRect document = plan.document();
  const int rows = static_cast<int>(window.lines.size()) + 2;
  const int columns = static_cast<int>(checker::kWindowColumns) + 2 * kAround;
  const CellRect box = within(area, {area.row + (area.rows - rows) / 2,
                                     std::max(0, (document.columns - columns) / 2), rows, columns});
  canvas.frame(box);
  writeInFrame(canvas, box, box.row, window.title);
  writeInFrame(canvas, box, box.row + box.rows - 1, window.keys);
  int row = box.row;
  for (const std::u16string& line : window.lines) {
    canvas.write(++row, box.column + kAround, box.column + box.columns - kAround,
                 fitted(toCharacters(line), box.columns - 2 * kAround));
  }
}

}  // namespace quorvane::desk
