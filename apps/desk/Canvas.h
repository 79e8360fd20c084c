#pragma once
// A picture of a terminal's screen in memory: cells with their characters and looks.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::desk {

struct Look {
  bool reversed = false;
  bool underlined = false;
  bool bold = false;
  bool faint = false;
  bool operator==(const Look&) const = default;
};

/// In cells, from the top left.
struct CellRect {
  int row = 0;
  int column = 0;
  int rows = 0;
  int columns = 0;
  bool operator==(const CellRect&) const = default;
};

/// The part of `rect` that lies in `area`; it may be empty.
CellRect within(const CellRect& area, CellRect rect);

struct Cell {
  std::u32string text = U" ";  ///< a character and what stands on it; empty: the one before is wide
  Look look;
};

class Canvas {
 public:
  Canvas(int rows, int columns);

  [[nodiscard]] int rows() const { return rows_; }
  [[nodiscard]] int columns() const { return columns_; }
  /// Must be inside.
  [[nodiscard]] const Cell& at(int row, int column) const { return cells_[index(row, column)]; }

  /// Writes what goes into the row before column `end`; returns the column behind it. Nothing is
  /// ever drawn outside the canvas.
  int write(int row, int column, int end, std::u32string_view text, Look look = {});
  void fill(const CellRect& rect, char32_t character, Look look = {});

  /// Clears it, but for a line along its edge.
  void frame(const CellRect& rect);

  int cursorRow = 0;
  int cursorColumn = 0;
  bool cursorShown = false;

 private:
  [[nodiscard]] std::size_t index(int row, int column) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
           static_cast<std::size_t>(column);
  }
  [[nodiscard]] bool holds(int row, int column) const {
    return row >= 0 && row < rows_ && column >= 0 && column < columns_;
  }
  void put(int row, int column, char32_t character, int cells, Look look);

  int rows_;
  int columns_;
  std::vector<Cell> cells_;
};

}  // namespace quorvane::desk
