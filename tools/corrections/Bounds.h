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
    {4, {3.3F, 1.75F}, {3.6F, 3}},
    {5, {1, 2}, {0.8F, 3}},
    {6, {-0.6F, 2.75F}, {1.5F, 3.25F}},
    {7, {-2, 1.75F}, {-0.6F, 1.75F}},
    {9, {-3.2F, 1.5F}, {-1.6F, 1.75F}},
    {24, {-6.8F, 1.75F}, {-3.4F, 2.5F}},
}};

/// On top, by how it is written, as `Writing` counts: with the capital that begins a sentence, with
/// one in mid-sentence, which is rather a name's, or behind a hyphen, as parts of names are.
inline constexpr std::array<Bounds, 4> kForWriting{{{0, 0}, {1.5F, 1.75F}, {4, 3.5F}, {3, 3}}};

}  // namespace quorvane::corrections
