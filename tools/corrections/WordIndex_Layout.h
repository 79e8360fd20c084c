#pragma once
// Where what lies in the snapshot of a word index. Every change here asks for another kind.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <span>
#include <string_view>

#include "platform/MacTypes.h"
#include "tools/corrections/Alphabet.h"

namespace quorvane::corrections {

inline constexpr FourCharCode kWordIndex = "Cor4"_4cc;

enum WordIndexSection : std::size_t {
  kWords = 1,        ///< texts: two sections, in the order of their bytes
  kFrequencies = 3,  ///< 8 bits for each word, see below
  kBuckets = 4,      ///< 32 bits for each bucket and the end: where its entries begin
  kEntries = 5,      ///< 24 bits each: a word that leaves behind what hashes to this bucket
  kSounds = 6,       ///< a byte for each word, see `FirstSound`
  kLetterSets = 7,   ///< 32 bits for each word, see `lettersIn`
};

enum class FirstSound : std::uint8_t { Unknown, Consonant, Vowel };

/// What is left of a word's beginning when up to two letters are taken out leads to the word.
inline constexpr std::size_t kPrefix = 7;
inline constexpr std::size_t kMostSlips = 2;
inline constexpr std::size_t kBucketCount = std::size_t{1} << 18;

/// Natural logarithms in steps of 1/14; 0 where the word is only known to exist.
inline constexpr float kFrequencySteps = 14;

inline std::uint8_t packedFrequency(double frequency) {
  return frequency < 1 ? 0 : static_cast<std::uint8_t>(1 + std::log(frequency) * kFrequencySteps);
}
inline float logFrequency(std::uint8_t packed) {
  return packed == 0 ? 0 : static_cast<float>(packed - 1) / kFrequencySteps;
}

/// Number and size of a word.
using PackedEntry = std::array<std::uint8_t, 3>;
inline constexpr std::size_t kMostIndexed = std::size_t{1} << 19;

constexpr PackedEntry packedEntry(std::uint32_t word, std::size_t size) {
  const auto bits = word << 5U | static_cast<std::uint32_t>(size);
  return {static_cast<std::uint8_t>(bits >> 16U), static_cast<std::uint8_t>(bits >> 8U),
          static_cast<std::uint8_t>(bits)};
}
constexpr std::uint32_t wordIn(PackedEntry entry) {
  return std::uint32_t{entry[0]} << 11U | std::uint32_t{entry[1]} << 3U | entry[2] >> 5U;
}
constexpr std::size_t sizeIn(PackedEntry entry) { return entry[2] & 31U; }
static_assert(kLongestWord < 32);

constexpr std::size_t bucketOf(std::string_view remains) {
  std::uint32_t hash = 2166136261;
  for (const char c : remains) hash = (hash ^ static_cast<std::uint8_t>(c)) * 16777619;
  return (hash ^ hash >> 15) % kBucketCount;
}

/// A bit for each letter that comes in it.
constexpr std::uint32_t lettersIn(std::string_view word) {
  std::uint32_t letters = 0;
  for (const char c : word) letters |= 1U << (static_cast<std::uint8_t>(c) & 31U);
  return letters;
}

inline void leaveOut(std::string_view text, std::size_t at, std::span<char> rest) {
  const auto behind = std::ranges::copy(text.substr(0, at), rest.begin()).out;
  std::ranges::copy(text.substr(at + 1), behind);
}

/// In a short word two slips leave nothing that tells what was meant.
constexpr std::size_t mostSlipsIn(std::string_view word) {
  constexpr std::size_t kShort = 4;
  return word.size() <= kShort ? 1 : kMostSlips;
}

/// Tells of the beginning of `word` and of what is left of it without one letter, and without two
/// where `slips` is two; of some remains more than once.
template <class Visit>
void visitRemains(std::string_view word, std::size_t slips, Visit visit) {
  const std::string_view all = word.substr(0, kPrefix);
  visit(all);
  std::array<char, kPrefix> one;
  std::array<char, kPrefix> two;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const std::string_view less(one.data(), all.size() - 1);
    leaveOut(all, i, one);
    visit(less);
    if (slips < 2) continue;
    for (std::size_t j = i; j < less.size(); ++j) {
      leaveOut(less, j, two);
      visit(std::string_view(two.data(), less.size() - 1));
    }
  }
}

}  // namespace quorvane::corrections
