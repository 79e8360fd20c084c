#pragma once
// Mistakes of writing that no dictionary knows: few, and certain.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace quorvane::checker {

/// Whether a word with this text before it surely begins a sentence: behind a full stop that ends
/// no abbreviation, or a question or exclamation mark that no quotation mark follows.
bool surelyOpensSentence(std::span<const std::uint8_t> before);

/// Where the blanks begin that stand between a word and the mark at `mark`: a comma, a semicolon or
/// a mark that ends a sentence, with white space or nothing behind it.
std::optional<std::size_t> blanksBeforeMark(std::span<const std::uint8_t> text, std::size_t mark);

}  // namespace quorvane::checker
