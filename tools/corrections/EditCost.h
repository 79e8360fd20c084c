#pragma once
// How unlikely it is that somebody who means one word types another: the cheapest way from the one
// to the other by slips.

#include <limits>
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
  static constexpr Cost kNoLimit = std::numeric_limits<Cost>::max();

  EditCost(const EditWeights& weights, const KeyNeighbours& neighbours);

  /// Both are words. Some cost above `limit` where it is more than that.
  [[nodiscard]] Cost between(std::string_view meant, std::string_view typed,
                             Cost limit = kNoLimit) const;
  /// The slips of that cheapest way, the last first.
  [[nodiscard]] std::vector<SlipAt> slips(std::string_view meant, std::string_view typed) const;

 private:
  struct Table;
  void fillFirstRow(Table& table) const;
  Cost fillRow(Table& table, std::size_t i) const;
  [[nodiscard]] Cost extra(const Table& table, std::size_t i, std::size_t j) const;
  [[nodiscard]] Cost missing(const Table& table, std::size_t i) const;
  [[nodiscard]] Cost changed(const Table& table, std::size_t i, std::size_t j) const;
  [[nodiscard]] Cost swapped(const Table& table, std::size_t i) const;
  [[nodiscard]] std::optional<SlipAt> lastSlip(const Table& table, std::size_t i,
                                               std::size_t j) const;

  EditWeights costs_;    ///< neighbours included
  PairCosts nearExtra_;  ///< with a neighbour beside it
  KeyNeighbours neighbours_;
};

}  // namespace quorvane::corrections
