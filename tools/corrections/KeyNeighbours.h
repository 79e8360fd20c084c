#pragma once
// Which letters lie side by side on a keyboard.

#include <array>
#include <cstdint>
#include <span>

#include "tools/corrections/Alphabet.h"

namespace quorvane::corrections {

class KeyNeighbours {
 public:
  /// Nobody is anybody's neighbour.
  KeyNeighbours() = default;
  /// As the layout, in the platform's format, has the letters on the keys of the three main rows.
  explicit KeyNeighbours(std::span<const std::uint8_t> keyLayout);

  [[nodiscard]] bool areNear(Letter one, Letter other) const {
    return (near_[one] >> other & 1U) != 0;
  }

 private:
  std::array<std::uint32_t, kLetters> near_{};
};

}  // namespace quorvane::corrections
