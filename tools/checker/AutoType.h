#pragma once
// Abbreviations that are written out as soon as the key behind them is typed.

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/TextEncoding.h"
#include "tools/checker/Fix.h"

namespace quorvane::checker {

/// By what is typed: 1 to 31 ASCII characters without a blank. The text is of 1 to 255 units.
using Abbreviations = std::unordered_map<std::string, std::u16string>;

/// Adds those of a file, each on a line: the abbreviation, a tabulator and its text, in UTF-8. One
/// that is known already keeps its text. How many lines are none.
std::size_t readAbbreviations(std::string_view file, TextEncoding& encoding,
                              Abbreviations& abbreviations);

/// One that has just been typed, as it stands or with a capital in place of its small first letter,
/// which its text then has, too. Empty where there is none, or where it begins before what is
/// vouched for.
std::optional<Fix> findExpansion(const Typing& typing, const Abbreviations& abbreviations);

}  // namespace quorvane::checker
