#pragma once
// What the Input Menu does to a text: pure functions. A line ends in a line feed, a return or both.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane::checker {

/// One space between words, none where a line begins or ends.
std::u16string withoutExtraSpaces(std::u16string_view text);
/// The lines of each paragraph in one; paragraphs are what empty lines stand between.
std::u16string withJoinedLines(std::u16string_view text);
/// Without the marks `>` that mail puts before the lines of an answer, and a space behind them.
std::u16string withoutQuoteMarks(std::u16string_view text);
/// By the rules of the system's language.
std::u16string inCapitals(std::u16string_view text);
std::u16string inSmallLetters(std::u16string_view text);

/// By the command's number, 17100 to 17102, 17110 and 17111; none for any other.
std::optional<std::u16string> afterTextTool(std::uint32_t command, std::u16string_view text);

}  // namespace quorvane::checker
