#pragma once
// How often which slip happens, as costs: natural logarithms of one in so many. Learned from pairs
// of what was typed and what was meant (`learn.cpp`), kept as text:
//
//     missing a c 5.21     meant "ac", typed "a"        extra a c 7.02     meant "a", typed "ac"
//     swapped a c 6.80     meant "ac", typed "ca"       changed a c 8.33   meant "a", typed "c"
//     near change 7.10     typed a neighbouring key     near extra 8.00    ... as well
//     first change 2.10    on top where it is the first letter; so "first swap"
//     other missing 12.5   every pair without a line of its own; so the other three
//
// `^` is the edge before the first letter. Neighbours are the layout's affair, so that what one
// keyboard teaches serves another.

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "tools/corrections/Alphabet.h"

namespace quorvane::corrections {

using Cost = float;
using PairCosts = std::array<std::array<Cost, kLetters>, kLetters>;

enum class Slip : std::size_t { Missing, Extra, Swapped, Changed };
inline constexpr std::size_t kSlips = 4;
inline constexpr std::array<std::string_view, kSlips> kSlipNames{"missing", "extra", "swapped",
                                                                 "changed"};

struct EditWeights {
  std::array<PairCosts, kSlips> pairs{};
  Cost nearChange = 0;
  Cost nearExtra = 0;
  Cost firstChange = 0;
  Cost firstSwap = 0;

  [[nodiscard]] const PairCosts& of(Slip slip) const {
    return pairs[static_cast<std::size_t>(slip)];
  }
  [[nodiscard]] PairCosts& of(Slip slip) { return pairs[static_cast<std::size_t>(slip)]; }
};

/// Lines that begin with # say nothing. Empty where a line has another form, or one of the eight
/// general costs is missing.
std::optional<EditWeights> parseEditWeights(std::string_view text);

/// `others`: the cost of a pair of each slip that needs no line.
std::string formatEditWeights(const EditWeights& weights, const std::array<Cost, kSlips>& others);

}  // namespace quorvane::corrections
