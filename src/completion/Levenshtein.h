#pragma once
// Plain Levenshtein distance (insertion, deletion and substitution cost 1 each) from one text to
// many words, in UTF-16 units. Up to 64 units of text are handled at once, one bit each: G. Myers,
// "A fast bit-vector algorithm for approximate string matching based on dynamic programming"
// (Journal of the ACM 46, 1999), in the form of H. Hyyrö, "A bit-vector algorithm for computing
// Levenshtein and Damerau edit distances" (Nordic Journal of Computing 10, 2003).

#include <array>
#include <cstdint>
#include <string_view>

namespace quorvane {

class Levenshtein {
 public:
  /// `text` must outlive this.
  explicit Levenshtein(std::u16string_view text);

  [[nodiscard]] std::size_t mdc_levenshteinDistanceTo(std::u16string_view word) const;
  /// The same for a word of ASCII characters alone.
  [[nodiscard]] std::size_t mdc_levenshteinDistanceTo(std::string_view asciiWord) const;

 private:
  template <class Unit>
  [[nodiscard]] std::size_t bitParallel(std::basic_string_view<Unit> word) const;
  [[nodiscard]] std::uint64_t positionsOf(char16_t unit) const;

  std::u16string_view text_;
  std::array<std::uint64_t, 128> asciiPositions_{};  ///< bit i: text_[i] is this character
};

}  // namespace quorvane
