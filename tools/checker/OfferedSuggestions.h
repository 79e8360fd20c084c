#pragma once
// What a popup may list for a word.

#include <string>
#include <vector>

namespace quorvane::checker {

/// What somebody may choose from: each suggestion that is made of letters and apostrophes once, in
/// their order, with the word's leading capital, `most` at most. `word` is ASCII.
std::vector<std::string> offeredSuggestions(const std::string& word, std::size_t most,
                                            const std::vector<std::string>& suggestions);

}  // namespace quorvane::checker
