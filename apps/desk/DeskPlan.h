#pragma once
// How the desk divides its terminal: the document's area, the side, a line above and one below.
// The document's area is the system's screen, in points.
//
//     +--------------------------------+---------------+
//     | title                                          |
//     +--------------------------------+---------------+
//     | document's area                | side          |
//     +--------------------------------+---------------+
//     | keys                                           |
//     +------------------------------------------------+

#include <string_view>
#include <vector>

#include "apps/desk/Canvas.h"
#include "apps/desk/TextLayout.h"
#include "platform/MacTypes.h"

namespace quorvane::desk {

inline constexpr int kCellWidth = 8;  ///< points
inline constexpr int kCellHeight = 16;
inline constexpr int kFewestRows = 16;
inline constexpr int kFewestColumns = 72;

class DeskPlan {
 public:
  DeskPlan(int rows, int columns) : rows_(rows), columns_(columns) {}

  [[nodiscard]] int rows() const { return rows_; }
  [[nodiscard]] int columns() const { return columns_; }
  /// False: the terminal is too small for a desk.
  [[nodiscard]] bool fits() const { return rows_ >= kFewestRows && columns_ >= kFewestColumns; }
  [[nodiscard]] CellRect document() const;
  [[nodiscard]] CellRect side() const;

  /// The document's area. Origin bottom left, as below.
  [[nodiscard]] NSRect screen() const;
  /// Of a cell of the terminal.
  [[nodiscard]] NSPoint bottomLeftOf(int row, int column) const;
  /// In cells of the terminal; what has any extent takes at least one.
  [[nodiscard]] CellRect cellsOf(const NSRect& rect) const;
  /// The cell with this point in it. Origin top left here, as text positions are published.
  [[nodiscard]] TextPlace cellAt(const NSPoint& point) const;

 private:
  int rows_;
  int columns_;
};

/// The document's text as it lies in its area: scrolled so that the caret shows.
class DeskText {
 public:
  /// The text outlives this.
  DeskText(const DeskPlan& plan, std::u16string_view text, std::size_t caret);

  /// Cells of the terminal.
  [[nodiscard]] TextPlace placeOf(std::size_t index) const;
  [[nodiscard]] bool shows(const TextPlace& place) const;

 private:
  CellRect area_;
  std::u16string_view text_;
  std::vector<TextRow> rows_;
  int hidden_ = 0;  ///< rows above the area
};

}  // namespace quorvane::desk
