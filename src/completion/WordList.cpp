#include "src/completion/WordList.h"

#include <stdexcept>

#include "src/base/WordListSeal.h"

namespace quorvane {
namespace {

[[noreturn]] void refuse(const std::string& complaint) {
  throw std::runtime_error("The word list " + complaint +
                           ". Run scripts/setup, or install the program again.");
}

}  // namespace

void loadWordList(WordListState& list, FileManager& files, const std::optional<std::string>& path) {
  if (!path) refuse("google_227800_words.bin is missing from the resources");
  // Read, not mapped: what is checked here stays as it is.
  list.file = files.dataWithContentsOfFile(*path);
  if (list.file == nullptr) refuse(*path + " can't be read");
  const auto bytes = list.file->bytes();
  if (!isWordListWhole(bytes)) refuse(*path + " is damaged, or was made by another program");
  try {
    list.trie.map(bytes.data(), bytes.size());
  } catch (const marisa::Exception& error) {
    refuse(*path + " is broken (" + error.what() + ")");
  }
}

}  // namespace quorvane
