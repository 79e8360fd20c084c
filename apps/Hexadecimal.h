#pragma once

#include <array>
#include <charconv>
#include <cstdint>
#include <string>

namespace quorvane {

/// Without leading zeros.
inline std::string hexadecimal(std::uint32_t number) {
  std::array<char, 8> digits;
  const auto end = std::to_chars(digits.begin(), digits.end(), number, 16);
  return {digits.begin(), end.ptr};
}

}  // namespace quorvane
