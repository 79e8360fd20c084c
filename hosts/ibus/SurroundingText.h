#pragma once
// The text around a client's caret, and what may be made of it. Pure functions over UTF-16.

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/MacTypes.h"

namespace quorvane::ibus {

/// A text with a caret. Places are UTF-16 units.
struct CaretText {
  std::u16string text;
  std::uint64_t caret = 0;
  std::uint64_t anchor = 0;  ///< the other end of the selection; at the caret: none

  [[nodiscard]] std::u16string_view before() const {
    return std::u16string_view(text).substr(0, selection().location);
  }
  [[nodiscard]] std::u16string_view behind() const {
    return std::u16string_view(text).substr(std::max(caret, anchor));
  }
  [[nodiscard]] NSRange selection() const {
    const std::uint64_t start = std::min(caret, anchor);
    return {start, std::max(caret, anchor) - start};
  }
  bool operator==(const CaretText&) const = default;
};

/// With the caret at the end of the selection.
CaretText caretTextOf(std::u16string text, NSRange selection);
/// As a client tells of it: UTF-8, places in code points, which are bounded to the text.
CaretText caretTextOf(std::string_view utf8, std::uint32_t caret, std::uint32_t anchor);

std::uint32_t codePointsIn(std::u16string_view text);

/// Deletes so many units before the caret, then inserts.
struct Edit {
  std::uint64_t deleted = 0;
  std::u16string inserted;

  [[nodiscard]] bool isNothing() const { return deleted == 0 && inserted.empty(); }
  bool operator==(const Edit&) const = default;
};

/// The smallest edit that makes `to` of `from`, in place of a selection; none where the texts
/// differ behind the caret. No character is cut in two.
std::optional<Edit> editBetween(const CaretText& from, const CaretText& to);

/// Whether a client that was believed to have `believed` before its caret may have `told`: the
/// whole of it, the last line of it, or the end of it.
bool mayBe(std::u16string_view told, std::u16string_view believed);

/// How far back from the caret a text and a session say the same.
struct Agreement {
  std::uint64_t length = 0;  ///< units of the text
  bool whole = false;        ///< as far as the session goes
};

/// In a session a line ends with a line feed; a character of the private use area stands for one
/// beyond ASCII of which the session doesn't know more.
Agreement agreementOf(std::u16string_view before, std::u16string_view session);
/// The session may be about the text that ends like this: they agree as far as both go.
bool belongTogether(std::u16string_view before, std::u16string_view session);

/// Text from `start` on may be replaced: it is agreed on from the word before it on. Where the
/// session begins later than that, it began at the start of a word.
bool mayReplace(std::u16string_view before, std::uint64_t start, const Agreement& agreement);

}  // namespace quorvane::ibus
