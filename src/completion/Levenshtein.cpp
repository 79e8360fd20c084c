#include "src/completion/Levenshtein.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

namespace quorvane {
namespace {

constexpr std::size_t kMostBits = 64;

/// One row of the matrix of distances after the other, for texts of any length.
std::size_t rowByRow(std::u16string_view text, std::u16string_view word) {
  std::vector<std::size_t> row(text.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (const char16_t unit : word) {
    std::size_t diagonal = row[0]++;
    for (std::size_t i = 1; i <= text.size(); ++i) {
      const std::size_t substituted = diagonal + (text[i - 1] == unit ? 0 : 1);
      diagonal = row[i];
      row[i] = std::min({row[i] + 1, row[i - 1] + 1, substituted});
    }
  }
  return row.back();
}

}  // namespace

Levenshtein::Levenshtein(std::u16string_view text) : text_(text) {
  for (std::size_t i = 0; i < std::min(text.size(), kMostBits); ++i) {
    if (text[i] < asciiPositions_.size()) asciiPositions_[text[i]] |= std::uint64_t{1} << i;
  }
}

std::size_t Levenshtein::mdc_levenshteinDistanceTo(std::u16string_view word) const {
  return text_.size() <= kMostBits ? bitParallel(word) : rowByRow(text_, word);
}

std::size_t Levenshtein::mdc_levenshteinDistanceTo(std::string_view asciiWord) const {
  if (text_.size() <= kMostBits) return bitParallel(asciiWord);
  return rowByRow(text_, std::u16string(asciiWord.begin(), asciiWord.end()));
}

std::uint64_t Levenshtein::positionsOf(char16_t unit) const {
  if (unit < asciiPositions_.size()) return asciiPositions_[unit];
  std::uint64_t positions = 0;
  for (std::size_t i = 0; i < text_.size(); ++i) {
    if (text_[i] == unit) positions |= std::uint64_t{1} << i;
  }
  return positions;
}

// A column of the matrix lies in two words: the bits where a cell is one more than the cell above
// it, and those where it is one less.
template <class Unit>
std::size_t Levenshtein::bitParallel(std::basic_string_view<Unit> word) const {
  if (text_.empty()) return word.size();
  const std::uint64_t lastBit = std::uint64_t{1} << (text_.size() - 1);
  std::uint64_t more = ~std::uint64_t{0};
  std::uint64_t less = 0;
  std::size_t distance = text_.size();
  for (const Unit unit : word) {
    const std::uint64_t equal = positionsOf(static_cast<std::make_unsigned_t<Unit>>(unit));
    const std::uint64_t diagonalZero = (((equal & more) + more) ^ more) | equal | less;
    std::uint64_t rightMore = less | ~(diagonalZero | more);
    std::uint64_t rightLess = diagonalZero & more;
    if ((rightMore & lastBit) != 0) ++distance;
    if ((rightLess & lastBit) != 0) --distance;
    rightMore = (rightMore << 1) | 1;
    rightLess <<= 1;
    more = rightLess | ~(diagonalZero | rightMore);
    less = diagonalZero & rightMore;
  }
  return distance;
}

}  // namespace quorvane
