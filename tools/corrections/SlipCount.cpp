#include "tools/corrections/SlipCount.h"

namespace quorvane::corrections {

static_assert(kLongestWord <= 32);

SlipCount::SlipCount(std::string_view word) : size_(word.size()) {
  for (std::size_t i = 0; i < word.size(); ++i) {
    places_[static_cast<std::uint8_t>(word[i])] |= std::uint32_t{1} << i;
  }
}

/// A column of the table of distances at each step: where it grows downwards, where it falls, and
/// where it is the same as the cell above on the left.
std::size_t SlipCount::to(std::string_view other) const {
  const std::uint32_t last = std::uint32_t{1} << (size_ - 1);
  std::uint32_t grows = ~std::uint32_t{0};
  std::uint32_t falls = 0;
  std::uint32_t same = 0;
  std::uint32_t placesBefore = 0;
  std::size_t slips = size_;
  for (const char c : other) {
    const std::uint32_t places = places_[static_cast<std::uint8_t>(c)];
    const std::uint32_t swapped = ((~same & places) << 1U) & placesBefore;
    same = (((places & grows) + grows) ^ grows) | places | falls | swapped;
    const std::uint32_t growsRight = falls | ~(same | grows);
    const std::uint32_t fallsRight = same & grows;
    if ((growsRight & last) != 0) ++slips;
    if ((fallsRight & last) != 0) --slips;
    const std::uint32_t above = growsRight << 1U | 1U;
    grows = fallsRight << 1U | ~(same | above);
    falls = above & same;
    placesBefore = places;
  }
  return slips;
}

}  // namespace quorvane::corrections
