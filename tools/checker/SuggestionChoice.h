#pragma once
// Which of a spell checker's suggestions is near enough to stand in for the word by itself. Typos
// are meant, names are not: what a dictionary lacks is as often a name as a mistake.

#include <optional>
#include <string>
#include <vector>

namespace quorvane::checker {

/// The nearest suggestion by edits (two neighbours changing places are one), the spell checker's
/// own order deciding between equals; the word's leading capital is kept. Empty where none is near:
/// - a word of up to three letters, or one with a capital in mid-sentence, which is a name, takes a
///   slip only: neighbours changed, an apostrophe left out or put in, a small first letter;
/// - one of up to five letters, or with a capital, takes one edit;
/// - any other takes two.
/// `word` is ASCII; suggestions with anything but letters and apostrophes don't count.
std::optional<std::string> chooseSuggestion(const std::string& word, bool midSentence,
                                            const std::vector<std::string>& suggestions);

/// What somebody may choose from: each suggestion that counts once, in the spell checker's order,
/// with the word's leading capital, `most` at most.
std::vector<std::string> offeredSuggestions(const std::string& word, std::size_t most,
                                            const std::vector<std::string>& suggestions);

}  // namespace quorvane::checker
