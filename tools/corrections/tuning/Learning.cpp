#include "tools/corrections/tuning/Learning.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "tools/corrections/EditCost.h"
#include "tools/corrections/SlipCount.h"
#include "tools/corrections/WordIndex_Layout.h"

namespace quorvane::corrections {

namespace {

/// The slips found are those of the cheapest way by the weights of the round before.
constexpr int kRounds = 4;
/// So many occurrences of a pair of letters are taken as seen before the first one, with slips as
/// the average pair has them.
constexpr double kDoubt = 30;
constexpr Cost kUniform = 6;

using Counts = std::array<std::array<double, kLetters>, kLetters>;

struct Tally {
  std::array<Counts, kSlips> slips{};
  Counts follows{};                        ///< one letter behind another, in words meant
  std::array<double, kLetters> letters{};  ///< in words meant, the edge being one
  double firstChanges = 0;
  double firstSwaps = 0;
  double words = 0;

  Counts& of(Slip slip) { return slips[static_cast<std::size_t>(slip)]; }
};

EditWeights uniformWeights() {
  EditWeights weights;
  for (auto& costs : weights.pairs) {
    for (auto& row : costs) row.fill(kUniform);
  }
  weights.nearChange = weights.nearExtra = weights.firstChange = weights.firstSwap = kUniform;
  return weights;
}

void addLetters(Tally& tally, std::string_view word) {
  Letter before = kEdge;
  tally.letters[kEdge] += 1;
  for (const char c : word) {
    const Letter letter = letterOf(c);
    tally.letters[letter] += 1;
    tally.follows[before][letter] += 1;
    before = letter;
  }
  tally.words += 1;
}

void addSlip(Tally& tally, const SlipAt& at) {
  tally.of(at.slip)[at.first][at.second] += 1;
  if (!at.atStart) return;
  if (at.slip == Slip::Changed) tally.firstChanges += 1;
  if (at.slip == Slip::Swapped) tally.firstSwaps += 1;
}

Tally count(const std::vector<Pair>& pairs, const EditCost& cost) {
  Tally tally;
  for (const Pair& pair : pairs) {
    if (SlipCount(pair.meant).to(pair.typed) > kMostSlips) continue;
    addLetters(tally, pair.meant);
    for (const SlipAt& at : cost.slips(pair.meant, pair.typed)) addSlip(tally, at);
  }
  return tally;
}

double sum(const Counts& counts) {
  double all = 0;
  for (const auto& row : counts) {
    for (const double number : row) all += number;
  }
  return all;
}

/// How often each pair might have slipped.
double chances(const Tally& tally, Slip slip, Letter x, Letter y) {
  return slip == Slip::Missing || slip == Slip::Swapped ? tally.follows[x][y] : tally.letters[x];
}

/// The share of slips that neighbouring keys have above what other keys have.
double nearShare(Tally& tally, Slip slip, const KeyNeighbours& neighbours) {
  double near = 0;
  double nearChances = 1;
  double far = 0;
  double farChances = 1;
  for (Letter x = 0; x < kApostrophe; ++x) {
    for (Letter y = 0; y < kApostrophe; ++y) {
      if (x == y) continue;
      const bool isNear = neighbours.areNear(x, y);
      (isNear ? near : far) += tally.of(slip)[x][y];
      (isNear ? nearChances : farChances) += tally.letters[x];
    }
  }
  return std::max(near / nearChances - far / farChances, 1e-7);
}

void takeNear(Tally& tally, Slip slip, const KeyNeighbours& neighbours, double share) {
  for (Letter x = 0; x < kApostrophe; ++x) {
    for (Letter y = 0; y < kApostrophe; ++y) {
      double& counted = tally.of(slip)[x][y];
      if (neighbours.areNear(x, y)) counted = std::max(counted - share * tally.letters[x], 0.0);
    }
  }
}

/// `others`: the cost of a pair that was never seen to slip, where pairs are many.
PairCosts costsOf(Tally& tally, Slip slip, Cost& other) {
  const Counts& slips = tally.of(slip);
  const double places = slip == Slip::Missing || slip == Slip::Swapped
                            ? sum(tally.follows)
                            : sum(tally.follows) * (kLetters - 2);
  const double usual = std::max(sum(slips), 1.0) / places;
  PairCosts costs;
  other = static_cast<Cost>(-std::log(usual / 3));
  for (Letter x = 0; x < kLetters; ++x) {
    for (Letter y = 0; y < kLetters; ++y) {
      const double rate = (slips[x][y] + kDoubt * usual) / (chances(tally, slip, x, y) + kDoubt);
      costs[x][y] = slips[x][y] > 0 ? static_cast<Cost>(-std::log(std::min(rate, 0.5))) : other;
    }
  }
  return costs;
}

struct Learned {
  EditWeights weights;
  std::array<Cost, kSlips> others{};
};

Learned weightsOf(Tally tally, const KeyNeighbours& neighbours) {
  Learned learned;
  EditWeights& weights = learned.weights;
  const double changes = sum(tally.of(Slip::Changed));
  const double swaps = sum(tally.of(Slip::Swapped));
  const double lettersPerWord = sum(tally.follows) / tally.words;
  const auto rarer = [&](double atStart, double all) {
    const double share = (atStart + 1) / (all + lettersPerWord);
    return static_cast<Cost>(std::max(-std::log(share * lettersPerWord), 0.01));
  };
  weights.firstChange = rarer(tally.firstChanges, changes);
  weights.firstSwap = rarer(tally.firstSwaps, swaps);
  const double nearChange = nearShare(tally, Slip::Changed, neighbours);
  const double nearExtra = nearShare(tally, Slip::Extra, neighbours);
  takeNear(tally, Slip::Changed, neighbours, nearChange);
  takeNear(tally, Slip::Extra, neighbours, nearExtra);
  weights.nearChange = static_cast<Cost>(-std::log(nearChange));
  weights.nearExtra = static_cast<Cost>(-std::log(nearExtra));
  for (std::size_t slip = 0; slip < kSlips; ++slip) {
    weights.pairs[slip] = costsOf(tally, static_cast<Slip>(slip), learned.others[slip]);
  }
  return learned;
}

}  // namespace

std::vector<Pair> parsePairs(std::string_view text) {
  std::vector<Pair> pairs;
  std::istringstream lines{std::string(text)};
  for (std::string line; std::getline(lines, line);) {
    const std::size_t tab = line.find('\t');
    if (line.starts_with('#') || tab == std::string::npos) continue;
    Pair pair{line.substr(0, tab), line.substr(tab + 1)};
    if (isWord(pair.typed) && isWord(pair.meant)) pairs.push_back(std::move(pair));
  }
  return pairs;
}

std::string learnedWeights(const std::vector<Pair>& pairs, const KeyNeighbours& neighbours) {
  Learned learned{uniformWeights(), {}};
  for (int round = 0; round < kRounds; ++round) {
    const EditCost cost(learned.weights, neighbours);
    learned = weightsOf(count(pairs, cost), neighbours);
  }
  return formatEditWeights(learned.weights, learned.others);
}

}  // namespace quorvane::corrections
