#pragma once
// Words that no list has because they are made of words that lists have: inflected, derived,
// compounded. Who coins one seldom mistypes another.

#include <string_view>

#include "tools/corrections/WordIndex.h"

namespace quorvane::corrections {

/// Is it in the index, and does somebody write it? What stands at the far end of the largest word
/// lists and in no text is as often a slip that happens to be a word.
bool isKnown(const WordIndex& index, std::string_view word);

/// True where a known word with a prefix or an ending makes `word`, or two common ones together.
/// Not so where `candidate` is the same known word with the same ending, spelt another way, as
/// "occurred" is for "occured".
bool isMadeOfKnown(const WordIndex& index, std::string_view word, std::string_view candidate);

/// A very common word with s, ed, ing, er or ers behind it, as grammar has it: "initializers".
bool isRegularForm(const WordIndex& index, std::string_view word);

/// True where a known word with a prefix or an ending makes `word`, or two words that aren't short.
bool isWholeWord(const WordIndex& index, std::string_view word);

/// Nothing but their endings tells one from the other: "virtualize", "virtualized".
bool differInEnding(std::string_view one, std::string_view other);

/// Nothing but s and z: "globalisation", "globalization".
bool differInSpelling(std::string_view one, std::string_view other);

/// Ends in a vowel that ends few English words, where the candidate has none: "minutos", "minutes".
bool endsForeign(std::string_view word, std::string_view candidate);

}  // namespace quorvane::corrections
