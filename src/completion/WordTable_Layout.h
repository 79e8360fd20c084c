#pragma once
// Where what lies in the snapshot of a word table. Every change here asks for another kind.

#include <cstdint>
#include <limits>

#include "platform/MacTypes.h"

namespace quorvane {

inline constexpr FourCharCode kWordTable = "Wrd1"_4cc;

enum WordTableSection : std::size_t {
  kWords = 1,        ///< texts: two sections
  kRanks = 3,        ///< 32 bits for each word
  kOrders = 4,       ///< 8 bits for each word: the places in a block, sorted by rank
  kBlockMinima = 5,  ///< 32 bits for each block: its least rank
  kBlockHeads = 6,   ///< 64 bits for each block: the head of its first word
  kFrequencies = 7,  ///< 32 bits for each word, signed
  kAnnotations = 8,  ///< texts: for each word a TextList of phonetic symbol and translation
  kRanked = 10,      ///< one number of 32 bits, 1 or 0
};

/// Words in a block; the last one may have fewer.
inline constexpr std::size_t kBlock = 64;
/// The rank of a word that isn't in the word list.
inline constexpr std::uint32_t kNoRank = std::numeric_limits<std::uint32_t>::max();

}  // namespace quorvane
