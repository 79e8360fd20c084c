#pragma once
// Text that may be longer than its room: what is cut ends in an ellipsis.

#include <string>
#include <string_view>

#include "apps/desk/Canvas.h"

namespace quorvane::desk {

/// In cells.
int lengthOf(std::u32string_view text);
/// The text, or as much of it as has room together with an ellipsis.
std::u32string fitted(std::u32string_view text, int columns);
/// Lines into the rows of `rect`, broken where they are too long. Returns the rows used.
int writeLines(Canvas& canvas, const CellRect& rect, const std::u16string& text, Look look = {});

}  // namespace quorvane::desk
