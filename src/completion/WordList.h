#pragma once
// The word list: a saved trie, ours with its seal or anybody's without.

#include <marisa.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/FileManager.h"

namespace quorvane {

struct WordListState {
  std::string fileState;           ///< tells the file from what may take its place later
  std::unique_ptr<FileData> file;  ///< the trie lies in it
  marisa::Trie trie;
};

/// Throws std::runtime_error, whose message says what to do, where there is no whole trie in the
/// file. `path`: none where there is no such file.
void loadWordList(WordListState& list, FileManager& files, const std::optional<std::string>& path);

/// Visits every word that begins with `prefix`, in the order of the trie. A key that isn't plain
/// ASCII is no word.
template <class Visit>
void visitWords(const WordListState& list, const std::string& prefix, Visit visit) {
  const auto isAscii = [](char byte) { return (byte & 0x80) == 0; };
  marisa::Agent agent;
  agent.set_query(prefix.data(), prefix.size());
  while (list.trie.predictive_search(agent)) {
    const std::string_view word(agent.key().ptr(), agent.key().length());
    if (std::ranges::all_of(word, isAscii)) visit(word);
  }
}

}  // namespace quorvane
