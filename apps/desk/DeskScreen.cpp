#include "apps/desk/DeskScreen.h"

#include <algorithm>
#include <string_view>

#include "apps/desk/Characters.h"
#include "apps/desk/TextLayout.h"

namespace quorvane::desk {
namespace {

constexpr Look kBar{.reversed = true};
constexpr Look kTitle{.bold = true};
constexpr Look kMarked{.underlined = true};
constexpr Look kSelected{.reversed = true};
constexpr Look kEntry{.reversed = true};
constexpr Look kHighlighted{.reversed = false, .underlined = false, .bold = true};
constexpr Look kAnnotation{.reversed = true, .faint = true};

constexpr std::u32string_view kKeys = U" F2 annotation   F3 tap of Shift   Ctrl-Q quit";

bool isIn(std::size_t index, const NSRange& range) {
  return index >= range.location && index - range.location < range.length;
}

CellRect within(const CellRect& area, CellRect rect) {
  const int right = std::min(rect.column + rect.columns, area.column + area.columns);
  const int bottom = std::min(rect.row + rect.rows, area.row + area.rows);
  rect.column = std::max(rect.column, area.column);
  rect.row = std::max(rect.row, area.row);
  rect.columns = std::max(0, right - rect.column);
  rect.rows = std::max(0, bottom - rect.row);
  return rect;
}

/// Lines into the rows of `rect`, broken where they are too long. Returns the rows used.
int writeLines(Canvas& canvas, const CellRect& rect, const std::u16string& text, Look look) {
  int row = 0;
  for (const TextRow& line : breakLines(text, rect.columns)) {
    if (row == rect.rows) break;
    const auto part = std::u16string_view(text).substr(line.start, line.end - line.start);
    canvas.write(rect.row + row++, rect.column, rect.column + rect.columns, toCharacters(part),
                 look);
  }
  return row;
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

/// A digit and a blank before it and a blank behind it; the mark in the first blank tells the
/// highlight to whoever doesn't see the look.
std::u32string entryText(const PanelEntry& entry) {
  const auto label = static_cast<char32_t>(entry.label);
  const char32_t mark = entry.highlighted ? U'>' : U' ';
  return std::u32string{label, mark} + toCharacters(entry.text) + U' ';
}

void drawColumn(Canvas& canvas, const PanelView& panel, CellRect rect) {
  const int bottom = rect.row + rect.rows;
  for (const PanelEntry& entry : panel.entries) {
    if (rect.row >= bottom) return;
    const Look look = entry.highlighted ? kHighlighted : kEntry;
    canvas.fill({rect.row, rect.column, 1, rect.columns}, U' ', look);
    canvas.write(rect.row++, rect.column, rect.column + rect.columns, entryText(entry), look);
  }
}

int lengthOf(const std::u32string& text) {
  int cells = 0;
  for (const char32_t character : text) cells += desk::cellsOf(character);
  return cells;
}

/// The entry to begin with, so that the highlighted one is to be seen.
std::size_t firstInRow(const PanelView& panel, int columns) {
  const auto chosen = std::ranges::find_if(panel.entries, &PanelEntry::highlighted);
  if (chosen == panel.entries.end()) return 0;
  auto first = chosen + 1;
  for (; first != panel.entries.begin(); --first) {
    columns -= lengthOf(entryText(*(first - 1)));
    if (columns < 0) break;
  }
  return static_cast<std::size_t>(std::min(first, chosen) - panel.entries.begin());
}

void drawRow(Canvas& canvas, const PanelView& panel, const CellRect& rect) {
  canvas.fill({rect.row, rect.column, 1, rect.columns}, U' ', kEntry);
  int column = rect.column;
  for (std::size_t i = firstInRow(panel, rect.columns); i < panel.entries.size(); ++i) {
    const PanelEntry& entry = panel.entries[i];
    column = canvas.write(rect.row, column, rect.column + rect.columns, entryText(entry),
                          entry.highlighted ? kHighlighted : kEntry);
  }
}

void drawPanel(Canvas& canvas, const DeskPlan& plan, const PanelView& panel) {
  const CellRect rect = within(plan.document(), plan.cellsOf(panel.frame));
  if (rect.rows == 0 || rect.columns == 0 || panel.entries.empty()) return;
  if (panel.column) return drawColumn(canvas, panel, rect);
  drawRow(canvas, panel, rect);
}

void drawAnnotation(Canvas& canvas, const DeskPlan& plan, const AnnotationView& annotation) {
  const CellRect rect = within(plan.document(), plan.cellsOf(annotation.frame));
  if (rect.columns == 0) return;
  canvas.fill(rect, U' ', kAnnotation);
  writeLines(canvas, rect, annotation.text, kAnnotation);
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

void drawBox(Canvas& canvas, const CellRect& box) {
  const int right = box.column + box.columns - 1;
  const int bottom = box.row + box.rows - 1;
  canvas.fill(box, U' ');
  for (const int row : {box.row, bottom}) canvas.fill({row, box.column, 1, box.columns}, U'\u2500');
  for (const int side : {box.column, right}) canvas.fill({box.row, side, box.rows, 1}, U'\u2502');
  canvas.fill({box.row, box.column, 1, 1}, U'\u250C');
  canvas.fill({box.row, right, 1, 1}, U'\u2510');
  canvas.fill({bottom, box.column, 1, 1}, U'\u2514');
  canvas.fill({bottom, right, 1, 1}, U'\u2518');
}

void drawPopup(Canvas& canvas, const DeskPlan& plan, const PopupView& popup) {
  std::size_t longest = 0;
  for (const std::string& text : popup.suggestions) longest = std::max(longest, text.size());
  constexpr int kAround = 6;  // the box, the digit, blanks
  const int rows = static_cast<int>(popup.suggestions.size()) + 2;
  const CellRect box = frameOf(plan.document(), plan.cellAt(popup.corner), rows,
                               static_cast<int>(longest) + kAround);
  if (box.rows < 3 || box.columns < kAround) return;
  drawBox(canvas, box);
  for (int i = 0; i < box.rows - 2; ++i) {
    const std::string line =
        std::to_string(i + 1) + ' ' + popup.suggestions[static_cast<std::size_t>(i)];
    canvas.write(box.row + 1 + i, box.column + 2, box.column + box.columns - 1, widened(line));
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
  if (model.panel) drawPanel(canvas, plan, *model.panel);
  if (model.annotation) drawAnnotation(canvas, plan, *model.annotation);
  if (model.popup) drawPopup(canvas, plan, *model.popup);
  return canvas;
}

}  // namespace quorvane::desk
