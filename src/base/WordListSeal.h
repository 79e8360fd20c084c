#pragma once
// The seal of a word list: 16 bytes behind the trie, which the trie's own reader passes over. A
// trie is walked without a look at its bounds, so that damage could lead anywhere.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <span>

#include "src/base/Checksum.h"

namespace quorvane {

using WordListSeal = std::array<std::uint8_t, 16>;

/// What to write behind `trie`.
inline WordListSeal sealOfWordList(std::span<const std::uint8_t> trie) {
  WordListSeal seal{'\n', 'S', 'e', 'a', 'l', 'e', 'd', '\n'};
  const std::uint64_t sum = checksum(trie);
  std::memcpy(seal.data() + 8, &sum, sizeof(sum));
  return seal;
}

/// Is the seal there, and that of the trie before it?
inline bool isWordListWhole(std::span<const std::uint8_t> file) {
  if (file.size() < sizeof(WordListSeal)) return false;
  const auto trie = file.first(file.size() - sizeof(WordListSeal));
  return std::ranges::equal(sealOfWordList(trie), file.last(sizeof(WordListSeal)));
}

}  // namespace quorvane
