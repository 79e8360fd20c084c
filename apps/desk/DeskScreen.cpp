#include "apps/desk/DeskScreen.h"

#include <algorithm>
#include <string_view>

#include "apps/desk/CandidatesDrawing.h"
#include "apps/desk/Characters.h"
#include "apps/desk/MenuDrawing.h"
#include "apps/desk/TextDrawing.h"
#include "apps/desk/WindowDrawing.h"

namespace quorvane::desk {
namespace {

constexpr Look kBar{.reversed = true};
constexpr Look kTitle{.bold = true};
constexpr Look kMarked{.underlined = true};
constexpr Look kSelected{.reversed = true};

constexpr std::u32string_view kKeys = U" F2 annotation   F3 tap of Shift   F9 menu   Ctrl-Q quit";

bool isIn(std::size_t index, const NSRange& range) {
  return index >= range.location && index - range.location < range.length;
}

void drawBars(Canvas& canvas, const DeskPlan& plan) {
  const CellRect side = plan.side();
  canvas.fill({0, 0, 1, plan.columns()}, U' ', kBar);
  canvas.write(0, 1, side.column, U"document", kBar);
  canvas.write(0, side.column + 1, plan.columns(), U"what the input method knows", kBar);
  canvas.fill({plan.rows() - 1, 0, 1, plan.columns()}, U' ', kBar);
  canvas.write(plan.rows() - 1, 0, plan.columns(), kKeys, kBar);
}

Look lookAt(const DeskModel& model, std::size_t index) {
  if (isIn(index, model.selection)) return kSelected;
  return model.marked && isIn(index, *model.marked) ? kMarked : Look{};
}

void drawText(Canvas& canvas, const DeskPlan& plan, const DeskModel& model, const DeskText& text) {
  const CellRect area = plan.document();
  for (std::size_t i = 0; i < model.text.size();) {
    const Character character = characterAt(model.text, i);
    const TextPlace place = text.placeOf(i);
    const bool blank = character.value == U'\n' || character.value == U'\t';
    if (text.shows(place) && !blank) {
      canvas.write(place.row, place.column, area.column + area.columns, {&character.value, 1},
                   lookAt(model, i));
    }
    i += character.units;
  }
}

void placeCursor(Canvas& canvas, const DeskModel& model, const DeskText& text) {
  const TextPlace caret = text.placeOf(model.selection.location + model.selection.length);
  canvas.cursorRow = caret.row;
  canvas.cursorColumn = caret.column;
  canvas.cursorShown = text.shows(caret);
}

/// Where there is more room: below the line, as published, or above it; moved left into the area.
CellRect frameOf(const CellRect& area, const TextPlace& corner, int rows, int columns) {
  const int below = area.row + area.rows - corner.row;
  const int above = corner.row - 1 - area.row;
  const bool under = rows <= below || below >= above;
  const int height = std::min(rows, under ? below : above);
  const int left = std::min(corner.column, area.column + area.columns - columns);
  return within(area, {under ? corner.row : corner.row - 1 - height, left, height, columns});
}

void drawPopup(Canvas& canvas, const DeskPlan& plan, const PopupView& popup) {
  std::size_t longest = 0;
  for (const std::string& text : popup.suggestions) longest = std::max(longest, text.size());
  constexpr int kAround = 6;  // the box, the digit, blanks
  const int rows = static_cast<int>(popup.suggestions.size()) + 2;
  const CellRect box = frameOf(plan.document(), plan.cellAt(popup.corner), rows,
                               static_cast<int>(longest) + kAround);
  if (box.rows < 3 || box.columns < kAround) return;
  canvas.frame(box);
  for (int i = 0; i < box.rows - 2; ++i) {
    const std::string line =
        std::to_string(i + 1) + ' ' + popup.suggestions[static_cast<std::size_t>(i)];
    canvas.write(box.row + 1 + i, box.column + 2, box.column + box.columns - 1,
                 fitted(widened(line), box.columns - 3));
  }
}

void drawSide(Canvas& canvas, const DeskPlan& plan, const std::vector<Fact>& facts) {
  const CellRect side = plan.side();
  canvas.fill({side.row, side.column, side.rows, 1}, U'\u2502');
  CellRect room{side.row, side.column + 2, side.rows, side.columns - 3};
  for (const Fact& fact : facts) {
    if (room.rows <= 0) return;
    canvas.write(room.row, room.column, room.column + room.columns, widened(fact.title), kTitle);
    CellRect rest{room.row + 1, room.column + 1, room.rows - 1, room.columns - 1};
    for (const std::u16string& line : fact.lines) {
      const int used = writeLines(canvas, rest, line, {});
      rest.row += used;
      rest.rows -= used;
    }
    room.row = rest.row + 1;
    room.rows = rest.rows - 1;
  }
}

Canvas tooSmall(const DeskPlan& plan) {
  Canvas canvas(plan.rows(), plan.columns());
  const std::string text = "The desk needs " + std::to_string(kFewestColumns) + " x " +
                           std::to_string(kFewestRows) + " characters; here are " +
                           std::to_string(plan.columns()) + " x " + std::to_string(plan.rows()) +
                           ".";
  writeLines(canvas, {0, 0, plan.rows(), plan.columns()}, {text.begin(), text.end()}, {});
  return canvas;
}

}  // namespace

Canvas drawDesk(const DeskPlan& plan, const DeskModel& model) {
  if (!plan.fits()) return tooSmall(plan);
  Canvas canvas(plan.rows(), plan.columns());
  const DeskText text(plan, model.text, model.selection.location + model.selection.length);
  drawBars(canvas, plan);
  drawText(canvas, plan, model, text);
  placeCursor(canvas, model, text);
  drawSide(canvas, plan, model.facts);
  drawCandidates(canvas, plan, model,
                 text.placeOf(model.marked.value_or(model.selection).location).row);
  if (model.popup) drawPopup(canvas, plan, *model.popup);
  drawMenus(canvas, plan, model.menus);
  if (model.window) drawWindow(canvas, plan, *model.window);
  canvas.cursorShown = canvas.cursorShown && model.menus.empty() && !model.window;
  return canvas;
}

}  // namespace quorvane::desk
