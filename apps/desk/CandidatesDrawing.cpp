#include "apps/desk/CandidatesDrawing.h"

#include <algorithm>
#include <array>
#include <span>

#include "apps/desk/Characters.h"
#include "apps/desk/TextDrawing.h"

namespace quorvane::desk {
namespace {

constexpr Look kEntry{.reversed = true};
constexpr Look kHighlighted{.reversed = false, .underlined = false, .bold = true};
constexpr Look kAnnotation{.reversed = true, .faint = true};
constexpr int kArrow = 1;  // cells

Look lookOf(const PanelEntry& entry) { return entry.highlighted ? kHighlighted : kEntry; }

/// A digit and a blank before it and a blank behind it; the mark in the first blank tells the
/// highlight to whoever doesn't see the look.
std::u32string textOf(const PanelEntry& entry, int columns) {
  const auto label = static_cast<char32_t>(entry.label);
  const char32_t mark = entry.highlighted ? U'>' : U' ';
  return fitted(std::u32string{label, mark} + toCharacters(entry.text) + U' ', columns);
}

void drawColumn(Canvas& canvas, const PanelView& panel, CellRect rect) {
  const int bottom = rect.row + rect.rows;
  for (const PanelEntry& entry : panel.entries) {
    if (rect.row >= bottom) return;
    canvas.fill({rect.row, rect.column, 1, rect.columns}, U' ', lookOf(entry));
    canvas.write(rect.row++, rect.column, rect.column + rect.columns, textOf(entry, rect.columns),
                 lookOf(entry));
  }
}

int widthOf(const PanelEntry& entry, int columns) { return lengthOf(textOf(entry, columns)); }

/// Of the pages that hold whole entries, the one with the highlighted entry.
std::span<const PanelEntry> pageOf(std::span<const PanelEntry> entries, int columns) {
  const auto chosen = std::ranges::find_if(entries, &PanelEntry::highlighted);
  auto first = entries.begin();
  int left = columns;
  for (auto entry = first; entry != entries.end(); ++entry) {
    const int length = widthOf(*entry, columns);
    if (length > left) {
      if (chosen < entry || chosen == entries.end()) return {first, entry};
      first = entry;
      left = columns;
    }
    left -= length;
  }
  return {first, entries.end()};
}

int widthOf(std::span<const PanelEntry> entries, int columns) {
  int cells = 0;
  for (const PanelEntry& entry : entries) cells += widthOf(entry, columns);
  return cells;
}

/// Whole entries, with an arrow wherever there are more.
void drawRow(Canvas& canvas, const PanelView& panel, const CellRect& rect) {
  const std::span<const PanelEntry> all(panel.entries);
  const bool more = panel.moreBefore || panel.moreBehind;
  const bool arrows = more || widthOf(all, rect.columns) > rect.columns;
  const int room = rect.columns - (arrows ? 2 * kArrow : 0);
  const auto page = pageOf(all, room);
  const int end = rect.column + rect.columns;
  canvas.fill(rect, U' ', kEntry);
  int column = rect.column + (arrows ? kArrow : 0);
  for (const PanelEntry& entry : page) {
    column = canvas.write(rect.row, column, end, textOf(entry, room), lookOf(entry));
  }
  const bool before = panel.moreBefore || &page.front() != &all.front();
  const bool behind = panel.moreBehind || &page.back() != &all.back();
  if (before) canvas.write(rect.row, rect.column, end, U"\u2190", kEntry);
  if (behind) canvas.write(rect.row, end - kArrow, end, U"\u2192", kEntry);
}

/// Where the panel stands, with room for the arrows of a row.
CellRect frameOf(const DeskPlan& plan, const PanelView& panel) {
  CellRect frame = plan.cellsOf(panel.frame);
  if (!panel.column && (panel.moreBefore || panel.moreBehind)) frame.columns += 2 * kArrow;
  return within(plan.document(), frame);
}

void drawPanel(Canvas& canvas, const PanelView& panel, const CellRect& rect) {
  if (rect.rows == 0 || rect.columns == 0) return;
  if (panel.column) return drawColumn(canvas, panel, rect);
  drawRow(canvas, panel, rect);
}

bool touch(const CellRect& one, const CellRect& other) {
  const CellRect common = within(one, other);
  return common.rows > 0 && common.columns > 0;
}

/// Where it is wanted, or else beside, below or above the panel: where most of it is to be seen.
/// Neither the panel nor the line is covered, nor the edge of the area crossed.
CellRect placeFor(const CellRect& wanted, const CellRect& area, const CellRect& panel, int line) {
  const int right = panel.column + panel.columns;
  const int bottom = panel.row + panel.rows;
  const int under = std::max(bottom, line + 1);
  const int over = std::min(panel.row, line);
  const int beside = line < panel.row ? panel.row : bottom - wanted.rows;
  const int left = std::min(panel.column, area.column + area.columns - wanted.columns);
  const CellRect nowhere{panel.row, panel.column, 0, 0};
  const std::array<CellRect, 5> places{{
      touch(wanted, panel) ? nowhere : wanted,
      {beside, right, wanted.rows, wanted.columns},
      {beside, panel.column - wanted.columns, wanted.rows, wanted.columns},
      {under, left, wanted.rows, wanted.columns},
      {over - wanted.rows, left, wanted.rows, wanted.columns},
  }};
  const auto seen = [&area](const CellRect& place) {
    const CellRect part = within(area, place);
    return part.rows * part.columns;
  };
  return within(area, *std::ranges::max_element(places, {}, seen));
}

}  // namespace

void drawCandidates(Canvas& canvas, const DeskPlan& plan, const DeskModel& model, int line) {
  const CellRect area = plan.document();
  CellRect panel{};
  if (model.panel && !model.panel->entries.empty()) {
    panel = frameOf(plan, *model.panel);
    drawPanel(canvas, *model.panel, panel);
  }
  if (!model.annotation) return;
  const CellRect place = placeFor(plan.cellsOf(model.annotation->frame), area, panel, line);
  canvas.fill(place, U' ', kAnnotation);
  writeLines(canvas, place, model.annotation->text, kAnnotation);
}

}  // namespace quorvane::desk
