#include "tools/corrections/EditCost.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace quorvane::corrections {

namespace {

constexpr Cost kFar = std::numeric_limits<Cost>::max();

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

struct EditCost::Step {
  Cost cost;
  std::uint8_t meantBack;
  std::uint8_t typedBack;
};

struct EditCost::Table {
  Letters meant;
  Letters typed;
  std::array<std::array<Step, kLongestWord + 1>, kLongestWord + 1> steps;
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
Cost EditCost::extra(Letter before, Letter behind, Letter typed) const {
  const bool near = neighbours_.areNear(before, typed) || neighbours_.areNear(behind, typed);
  return (near ? nearExtra_ : costs_.of(Slip::Extra))[before][typed];
}

/// `i` letters meant have become `j` letters typed.
void EditCost::step(Table& table, std::size_t i, std::size_t j) const {
  const Letters& meant = table.meant;
  const Letters& typed = table.typed;
  Step& best = table.steps[i][j];
  best = {kFar, 0, 0};
  const auto offer = [&](std::uint8_t meantBack, std::uint8_t typedBack, Cost cost) {
    cost += table.steps[i - meantBack][j - typedBack].cost;
    if (cost < best.cost) best = {cost, meantBack, typedBack};
  };
  if (i > 0 && j > 0) {
    const bool same = meant[i] == typed[j];
    offer(1, 1,
          same ? 0
               : costs_.of(Slip::Changed)[meant[i]][typed[j]] + (i == 1 ? costs_.firstChange : 0));
  }
  if (i > 0) offer(1, 0, costs_.of(Slip::Missing)[meant[i - 1]][meant[i]]);
  if (j > 0) offer(0, 1, extra(meant[i], meant[i + 1], typed[j]));
  if (i > 1 && j > 1 && meant[i] == typed[j - 1] && meant[i - 1] == typed[j]) {
    offer(2, 2, costs_.of(Slip::Swapped)[meant[i - 1]][meant[i]] + (i == 2 ? costs_.firstSwap : 0));
  }
}

EditCost::Table EditCost::fill(std::string_view meant, std::string_view typed) const {
  Table table;  // most of it is never used
  table.meant = lettersOf(meant);
  table.typed = lettersOf(typed);
  table.steps[0][0] = {0, 0, 0};
  for (std::size_t i = 0; i <= meant.size(); ++i) {
    for (std::size_t j = 0; j <= typed.size(); ++j) {
      if (i + j > 0) step(table, i, j);
    }
  }
  return table;
}

Cost EditCost::between(std::string_view meant, std::string_view typed) const {
  return fill(meant, typed).steps[meant.size()][typed.size()].cost;
}

std::vector<SlipAt> EditCost::slips(std::string_view meant, std::string_view typed) const {
  const Table table = fill(meant, typed);
  std::vector<SlipAt> found;
  for (std::size_t i = meant.size(), j = typed.size(); i + j > 0;) {
    const Step& last = table.steps[i][j];
    const Letter was = table.meant[i];
    const Letter became = table.typed[j];
    if (last.meantBack == 2) {
      found.push_back({Slip::Swapped, table.meant[i - 1], was, i == 2});
    } else if (last.meantBack == 0) {
      found.push_back({Slip::Extra, was, became, i == 0});
    } else if (last.typedBack == 0) {
      found.push_back({Slip::Missing, table.meant[i - 1], was, i == 1});
    } else if (was != became) {
      found.push_back({Slip::Changed, was, became, i == 1});
    }
    i -= last.meantBack;
    j -= last.typedBack;
  }
  return found;
}

namespace {

using Row = std::array<std::uint8_t, kLongestWord + 2>;

/// Row `i` of the table of slips, as far as it lies near the diagonal, and its least number.
std::size_t fillRow(std::array<Row, 3>& rows, std::string_view one, std::string_view other,
                    std::size_t i, std::size_t limit) {
  const auto far = static_cast<std::uint8_t>(limit + 1);
  Row& row = rows[i % 3];
  const Row& before = rows[(i + 2) % 3];
  const Row& before2 = rows[(i + 1) % 3];
  const std::size_t first = i > limit ? i - limit : 1;
  const std::size_t last = std::min(other.size(), i + limit);
  std::uint8_t least = row[first - 1] = i <= limit ? static_cast<std::uint8_t>(i) : far;
  for (std::size_t j = first; j <= last; ++j) {
    const bool differ = one[i - 1] != other[j - 1];
    auto slips = std::min<int>({before[j] + 1, row[j - 1] + 1, before[j - 1] + int{differ}});
    if (i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1]) {
      slips = std::min(slips, before2[j - 2] + 1);
    }
    row[j] = std::min(static_cast<std::uint8_t>(slips), far);
    least = std::min(least, row[j]);
  }
  row[last + 1] = far;
  return least;
}

/// Beginnings and ends that are the same cost nothing.
void dropWhatIsSame(std::string_view& one, std::string_view& other) {
  while (!one.empty() && !other.empty() && one.front() == other.front()) {
    one.remove_prefix(1);
    other.remove_prefix(1);
  }
  while (!one.empty() && !other.empty() && one.back() == other.back()) {
    one.remove_suffix(1);
    other.remove_suffix(1);
  }
}

}  // namespace

std::size_t slipsBetween(std::string_view one, std::string_view other, std::size_t limit) {
  if (std::max(one.size(), other.size()) > kLongestWord) return limit + 1;
  if (one.size() > other.size() + limit || other.size() > one.size() + limit) return limit + 1;
  dropWhatIsSame(one, other);
  std::array<Row, 3> rows;
  for (std::size_t j = 0; j < rows[0].size(); ++j) {
    rows[0][j] = static_cast<std::uint8_t>(std::min(j, limit + 1));
  }
  for (std::size_t i = 1; i <= one.size(); ++i) {
    if (fillRow(rows, one, other, i, limit) > limit) return limit + 1;
  }
  return rows[one.size() % 3][other.size()];
}

}  // namespace quorvane::corrections
