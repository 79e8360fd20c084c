#pragma once
// The weights of slips, learned from pairs of words.

#include <string>
#include <vector>

#include "tools/corrections/EditWeights.h"
#include "tools/corrections/KeyNeighbours.h"

namespace quorvane::corrections {

struct Pair {
  std::string typed;
  std::string meant;
};

/// Lines `typed<TAB>meant`; those that begin with #, and what is no pair of words, are passed over.
std::vector<Pair> parsePairs(std::string_view text);

/// As text, see `EditWeights`. `neighbours`: of the keyboard that the pairs were typed on, as far
/// as that is known; what it accounts for counts for neighbours and not for the letters.
std::string learnedWeights(const std::vector<Pair>& pairs, const KeyNeighbours& neighbours);

}  // namespace quorvane::corrections
