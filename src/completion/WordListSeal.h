#pragma once
// The seal of a word list: 16 bytes behind the trie, which the trie's own reader passes over. A
// trie is walked without a look at its bounds, so damage to an unsealed one can lead anywhere.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <span>

#include "src/completion/Checksum.h"

namespace quorvane {

using WordListSeal = std::array<std::uint8_t, 16>;

/// What to write behind `trie`.
inline WordListSeal sealOfWordList(std::span<const std::uint8_t> trie) {
  WordListSeal seal{'\n', 'S', 'e', 'a', 'l', 'e', 'd', '\n'};
  const std::uint64_t sum = checksum(trie);
  std::memcpy(seal.data() + 8, &sum, sizeof(sum));
  return seal;
}

/// False where there is a seal and it is another one.
inline bool isWordListWhole(std::span<const std::uint8_t> file) {
  if (file.size() < sizeof(WordListSeal)) return true;
  const auto end = file.last(sizeof(WordListSeal));
  const WordListSeal seal = sealOfWordList(file.first(file.size() - sizeof(WordListSeal)));
  return !std::equal(seal.begin(), seal.begin() + 8, end.begin()) || std::ranges::equal(seal, end);
}

}  // namespace quorvane
