#pragma once
// How many slips lead from one word to others: letters missing, extra, changed or swapped with the
// one beside, none of them touched twice. All letters of the word at once, a bit each: H. Hyyrö, "A
// bit-vector algorithm for computing Levenshtein and Damerau edit distances" (Nordic Journal of
// Computing 10, 2003).

#include <array>
#include <cstdint>
#include <string_view>

#include "tools/corrections/Alphabet.h"

namespace quorvane::corrections {

class SlipCount {
 public:
  /// Not empty, of `kLongestWord` characters at most, as `other` is.
  explicit SlipCount(std::string_view word);

  [[nodiscard]] std::size_t to(std::string_view other) const;

 private:
  std::array<std::uint32_t, 256> places_{};  ///< bit i: the word's letter i is this character
  std::size_t size_;
};

}  // namespace quorvane::corrections
