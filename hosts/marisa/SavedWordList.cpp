#include "hosts/marisa/SavedWordList.h"

#include <marisa.h>

#include <sstream>

#include "src/base/WordListSeal.h"

namespace quorvane {

std::string savedWordList(std::span<const std::string_view> words) {
  marisa::Keyset keys;
  for (const std::string_view word : words) keys.push_back(word.data(), word.size());
  marisa::Trie trie;
  trie.build(keys);
  std::ostringstream stream;
  stream << trie;
  std::string bytes = stream.str();
  const WordListSeal seal =
      sealOfWordList({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  return bytes.append(seal.begin(), seal.end());
}

}  // namespace quorvane
