#pragma once
// How sure is sure enough.

#include <array>
#include <cstddef>

namespace quorvane::corrections {

/// A score is half the logarithm of a word's frequency, less the cost of the slips that lead from
/// it to what was typed.
inline constexpr float kFrequencyWeight = 0.5F;

struct Bounds {
  float floor = 0;  ///< the least score of the best candidate
  float lead = 0;   ///< how far at least it leads the second
};

struct BoundsRow {
  std::size_t mostLetters = 0;
  Bounds plain;
  /// Where the letters are what a new word could be: made of known ones, or the candidate with a
  /// letter more or less at one end.
  Bounds doubtful;
};

/// By the letters typed. Chosen by measurement: scripts/corrections prints what they give.
inline constexpr std::array<BoundsRow, 8> kBounds{{
    {2, {99, 99}, {99, 99}},
    {3, {4.6F, 2.25F}, {5.5F, 2.5F}},
    {4, {3.3F, 2.5F}, {3.6F, 2.5F}},
    {5, {1.05F, 2}, {0.8F, 3}},
    {6, {-0.7F, 2.9F}, {1.5F, 3.25F}},
    {7, {-1.9F, 1.75F}, {-0.65F, 2.5F}},
    {9, {-3.3F, 2.25F}, {-1.6F, 1.75F}},
    {24, {-7, 2.4F}, {-4.1F, 2.5F}},
}};

/// On top, where a capital in mid-sentence says that it is rather a name.
inline constexpr Bounds kForName{3.0F, 3.0F};
/// On top, where a sentence begins with the capital.
inline constexpr Bounds kForCapital{1.0F, 0.5F};

}  // namespace quorvane::corrections
