#pragma once
// Regular forms of a word: which base they may belong to.

#include <string_view>
#include <vector>

#include "tools/word_data/WordNet.h"

namespace quorvane::word_data {

/// What the word would be a regular form of, by its ending alone: "tries" of the nouns "trie" and
/// "try" and of the verbs "tri", "trie" and "try". Most of these are no words.
std::vector<BaseForm> regularBases(std::string_view word);

}  // namespace quorvane::word_data
