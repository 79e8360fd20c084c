#include "src/completion/WordList.h"

#include <stdexcept>

#include "src/base/WordListSeal.h"
#include "src/completion/SavedTrie.h"

namespace quorvane {
namespace {

[[noreturn]] void refuse(const std::string& complaint) {
  throw std::runtime_error("The word list " + complaint +
                           ". Run scripts/setup, or install the program again.");
}

/// Of the words of a trie that bears no seal a new one is built, so that the library only ever
/// walks what it made itself. Nodes that were ordered by weights lose that order with the weights.
void build(marisa::Trie& trie, std::span<const std::uint8_t> bytes) {
  const SavedWords saved = wordsOfSavedTrie(bytes);
  marisa::Keyset keys;
  for (std::size_t i = 0; i < saved.words.size(); ++i) {
    const std::string_view word = saved.words[i];
    keys.push_back(word.data(), word.size());
  }
  trie.build(keys, saved.flags);
  if (trie.size() != saved.words.size()) throw DamagedTrie("a word comes twice");
}

void take(WordListState& list, std::span<const std::uint8_t> bytes) {
  switch (sealStateOf(bytes)) {
    case Sealed::Whole:
      return list.trie.map(bytes.data(), bytes.size());
    case Sealed::Broken:
      throw DamagedTrie("its checksum is another one");
    case Sealed::No:
      build(list.trie, bytes);
      list.file = nullptr;
  }
}

}  // namespace

void loadWordList(WordListState& list, FileManager& files, const std::optional<std::string>& path) {
  if (!path) refuse("google_227800_words.bin is missing from the resources");
  // Read, not mapped: what is checked here stays as it is.
  list.file = files.dataWithContentsOfFile(*path);
  if (list.file == nullptr) refuse(*path + " can't be read");
  try {
    take(list, list.file->bytes());
  } catch (const std::exception& error) {
    refuse(*path + " is damaged (" + error.what() + ")");
  }
}

}  // namespace quorvane
