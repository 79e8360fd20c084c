#pragma once
// How unlikely it is that somebody who means one word types another: the cheapest way from the one
// to the other by slips.

#include <optional>
#include <string_view>
#include <vector>

#include "tools/corrections/EditWeights.h"
#include "tools/corrections/KeyNeighbours.h"

namespace quorvane::corrections {

/// For two letters in the order of `EditWeights`.
struct SlipAt {
  Slip slip = Slip::Missing;
  Letter first = 0;
  Letter second = 0;
  bool atStart = false;
};

class EditCost {
 public:
  EditCost(const EditWeights& weights, const KeyNeighbours& neighbours);

  /// Both are words.
  [[nodiscard]] Cost between(std::string_view meant, std::string_view typed) const;
  /// The slips of that cheapest way, the last first.
  [[nodiscard]] std::vector<SlipAt> slips(std::string_view meant, std::string_view typed) const;

 private:
  struct Table;
  struct Step;
  [[nodiscard]] Table fill(std::string_view meant, std::string_view typed) const;
  void step(Table& table, std::size_t i, std::size_t j) const;
  [[nodiscard]] Cost extra(Letter before, Letter behind, Letter typed) const;

  EditWeights costs_;    ///< neighbours included
  PairCosts nearExtra_;  ///< with a neighbour beside it
  KeyNeighbours neighbours_;
};

/// How many slips lead from one to the other, swapped neighbours being one; `limit` + 1 where they
/// are more than `limit`.
std::size_t slipsBetween(std::string_view one, std::string_view other, std::size_t limit);

}  // namespace quorvane::corrections
