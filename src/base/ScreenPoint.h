#pragma once
// Points and rectangles in the old screen convention: 16 bits each, vertical first, origin at the
// top left.

#include <cstdint>

namespace quorvane {

struct QDPoint {
  std::int16_t v = 0;
  std::int16_t h = 0;
};

/// In screen units.
struct QDRect {
  std::int16_t top = 0;
  std::int16_t left = 0;
  std::int16_t bottom = 0;
  std::int16_t right = 0;
  bool operator==(const QDRect&) const = default;
};

/// Truncates toward zero and wraps into 16 bits; what no 64-bit number can hold becomes 0.
[[nodiscard]] inline std::int16_t toScreenUnit(double value) {
  constexpr double kLimit = 9e18;
  if (!(value > -kLimit && value < kLimit)) return 0;
  return static_cast<std::int16_t>(static_cast<std::int64_t>(value));
}

/// Vertical in the high 16 bits, horizontal in the low 16 bits.
[[nodiscard]] inline std::uint32_t packPoint(std::int16_t vertical, std::int16_t horizontal) {
  return (std::uint32_t{static_cast<std::uint16_t>(vertical)} << 16) |
         static_cast<std::uint16_t>(horizontal);
}

}  // namespace quorvane
