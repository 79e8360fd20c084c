#pragma once
// What a window of the stand-in shows: a page of text, small enough for every desk.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::checker {

inline constexpr std::size_t kWindowLines = 12;
inline constexpr std::size_t kWindowColumns = 66;  ///< UTF-16 units a line

struct WindowText {
  std::u16string title;
  std::u16string keys;  ///< which of them do something
  std::vector<std::u16string> lines;
  bool operator==(const WindowText&) const = default;
};

/// Lines of at most so many units, broken at blanks where there are any. Line feeds end a line,
/// other control characters are blanks.
std::vector<std::u16string> wrapped(std::u16string_view text, std::size_t columns);
/// The text, or as much of it as has room together with an ellipsis.
std::u16string shortened(std::u16string_view text, std::size_t columns);
/// Control characters as blanks.
std::u16string onOneLine(std::u16string_view text);

}  // namespace quorvane::checker
