#include "tools/corrections/EditCost.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quorvane::corrections {

namespace {

/// Of two causes either may have been at work.
Cost either(Cost one, Cost other) { return -std::log(std::exp(-one) + std::exp(-other)); }

using Letters = std::array<Letter, kLongestWord + 2>;

/// From index 1 on; an edge on either side.
Letters lettersOf(std::string_view word) {
  Letters letters;
  letters.fill(kEdge);
  for (std::size_t i = 0; i < word.size(); ++i) letters[i + 1] = letterOf(word[i]);
  return letters;
}

}  // namespace

/// What it costs that the first `i` letters meant have become the first `j` letters typed.
struct EditCost::Table {
  Table(std::string_view meantWord, std::string_view typedWord)
      : meant(lettersOf(meantWord)), typed(lettersOf(typedWord)), width(typedWord.size()) {}

  [[nodiscard]] bool isCrossed(std::size_t i, std::size_t j) const {
    return i > 1 && j > 1 && meant[i] == typed[j - 1] && meant[i - 1] == typed[j];
  }

  Letters meant;
  Letters typed;
  std::size_t width;
  std::array<std::array<Cost, kLongestWord + 1>, kLongestWord + 1> costs;  // most is never used
};

EditCost::EditCost(const EditWeights& weights, const KeyNeighbours& neighbours)
    : costs_(weights), neighbours_(neighbours) {
  PairCosts& changed = costs_.of(Slip::Changed);
  for (Letter x = 0; x < kLetters; ++x) {
    for (Letter y = 0; y < kLetters; ++y) {
      if (neighbours.areNear(x, y)) changed[x][y] = either(changed[x][y], weights.nearChange);
      nearExtra_[x][y] = either(costs_.of(Slip::Extra)[x][y], weights.nearExtra);
    }
  }
}

/// A finger that hits two keys hits the one beside the letter before or behind.
Cost EditCost::extra(const Table& table, std::size_t i, std::size_t j) const {
  const Letter before = table.meant[i];
  const Letter typed = table.typed[j];
  const bool near =
      neighbours_.areNear(before, typed) || neighbours_.areNear(table.meant[i + 1], typed);
  return (near ? nearExtra_ : costs_.of(Slip::Extra))[before][typed];
}

Cost EditCost::missing(const Table& table, std::size_t i) const {
  return costs_.of(Slip::Missing)[table.meant[i - 1]][table.meant[i]];
}

Cost EditCost::changed(const Table& table, std::size_t i, std::size_t j) const {
  if (table.meant[i] == table.typed[j]) return 0;
  const Cost cost = costs_.of(Slip::Changed)[table.meant[i]][table.typed[j]];
  return i == 1 ? cost + costs_.firstChange : cost;
}

Cost EditCost::swapped(const Table& table, std::size_t i) const {
  const Cost cost = costs_.of(Slip::Swapped)[table.meant[i - 1]][table.meant[i]];
  return i == 2 ? cost + costs_.firstSwap : cost;
}

void EditCost::fillFirstRow(Table& table) const {
  auto& row = table.costs[0];
  row[0] = 0;
  for (std::size_t j = 1; j <= table.width; ++j) row[j] = row[j - 1] + extra(table, 0, j);
}

/// Gives the least of the row.
Cost EditCost::fillRow(Table& table, std::size_t i) const {
  const auto& above = table.costs[i - 1];
  auto& row = table.costs[i];
  const Cost missed = missing(table, i);
  Cost least = row[0] = above[0] + missed;
  for (std::size_t j = 1; j <= table.width; ++j) {
    row[j] = std::min(
        {above[j - 1] + changed(table, i, j), above[j] + missed, row[j - 1] + extra(table, i, j)});
    if (table.isCrossed(i, j)) {
      row[j] = std::min(row[j], table.costs[i - 2][j - 2] + swapped(table, i));
    }
    least = std::min(least, row[j]);
  }
  return least;
}

/// Each way comes through one of any two rows that follow one another.
Cost EditCost::between(std::string_view meant, std::string_view typed, Cost limit) const {
  Table table(meant, typed);
  fillFirstRow(table);
  Cost leastBefore = 0;
  for (std::size_t i = 1; i <= meant.size(); ++i) {
    const Cost least = fillRow(table, i);
    if (std::min(least, leastBefore) > limit) return kNoLimit;
    leastBefore = least;
  }
  return table.costs[meant.size()][typed.size()];
}

std::vector<SlipAt> EditCost::slips(std::string_view meant, std::string_view typed) const {
  Table table(meant, typed);
  fillFirstRow(table);
  for (std::size_t i = 1; i <= meant.size(); ++i) fillRow(table, i);
  std::vector<SlipAt> found;
  for (std::size_t i = meant.size(), j = typed.size(); i + j > 0;) {
    const auto slip = lastSlip(table, i, j);
    if (slip) found.push_back(*slip);
    const bool both = !slip || slip->slip == Slip::Changed;
    const std::size_t letters = slip && slip->slip == Slip::Swapped ? 2 : 1;
    if (both || slip->slip != Slip::Extra) i -= letters;
    if (both || slip->slip != Slip::Missing) j -= letters;
  }
  return found;
}

/// On the cheapest way to (i, j); none where a letter was typed that was meant.
std::optional<SlipAt> EditCost::lastSlip(const Table& table, std::size_t i, std::size_t j) const {
  const auto& costs = table.costs;
  const Letter was = table.meant[i];
  const Letter became = table.typed[j];
  if (i > 0 && j > 0 && costs[i][j] == costs[i - 1][j - 1] + changed(table, i, j)) {
    if (was == became) return std::nullopt;
    return SlipAt{Slip::Changed, was, became, i == 1};
  }
  if (i > 0 && costs[i][j] == costs[i - 1][j] + missing(table, i)) {
    return SlipAt{Slip::Missing, table.meant[i - 1], was, i == 1};
  }
  if (j > 0 && costs[i][j] == costs[i][j - 1] + extra(table, i, j)) {
    return SlipAt{Slip::Extra, was, became, i == 0};
  }
  return SlipAt{Slip::Swapped, table.meant[i - 1], was, i == 2};
}

}  // namespace quorvane::corrections
