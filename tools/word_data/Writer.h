#pragma once
// The files that the input method reads.

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "tools/word_data/Glosses.h"
#include "tools/word_data/Phonetic.h"
#include "tools/word_data/Pronunciation.h"
#include "tools/word_data/Selection.h"

namespace quorvane::word_data {

/// As a JSON string, with its quotes. `text` is UTF-8.
std::string jsonString(std::string_view text);

struct WordTable {
  std::string json;  ///< {"word":{"frequency":1,"translation":["..."],"ipa":"..."},...}
  std::size_t defined = 0;
  std::size_t pronounced = 0;
};
WordTable wordTable(std::span<const Word> words, const Glosses& glosses,
                    const Pronunciations& pronunciations);

/// {"code":["word",...],...}
std::string codeTable(const CodeGroups& groups);

/// A saved trie with the seal behind it that its reader looks for. Throws std::runtime_error.
std::string sealedTrie(std::span<const Word> words);

}  // namespace quorvane::word_data
