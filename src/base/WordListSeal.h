#pragma once
// The seal of a word list: 16 bytes behind the trie, which the trie's own reader passes over. A
// trie is walked without a look at its bounds, so that damage could lead anywhere: with the seal it
// is known at once that there is none.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <span>

#include "src/base/Checksum.h"

namespace quorvane {

using WordListSeal = std::array<std::uint8_t, 16>;

inline constexpr WordListSeal kSealWithoutSum{'\n', 'S', 'e', 'a', 'l', 'e', 'd', '\n'};
inline constexpr std::size_t kSealHead = 8;

/// What to write behind `trie`.
inline WordListSeal sealOfWordList(std::span<const std::uint8_t> trie) {
  WordListSeal seal = kSealWithoutSum;
  const std::uint64_t sum = checksum(trie);
  std::memcpy(seal.data() + kSealHead, &sum, sizeof(sum));
  return seal;
}

enum class Sealed { No, Broken, Whole };

/// Is there a seal, and is it that of the trie before it?
inline Sealed sealStateOf(std::span<const std::uint8_t> file) {
  if (file.size() < sizeof(WordListSeal)) return Sealed::No;
  const auto seal = file.last(sizeof(WordListSeal));
  if (!std::ranges::equal(seal.first(kSealHead), std::span(kSealWithoutSum).first(kSealHead))) {
    return Sealed::No;
  }
  const auto trie = file.first(file.size() - sizeof(WordListSeal));
  return std::ranges::equal(sealOfWordList(trie), seal) ? Sealed::Whole : Sealed::Broken;
}

}  // namespace quorvane
