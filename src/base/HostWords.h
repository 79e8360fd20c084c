#pragma once
// Reading numbers in host order out of bytes that may claim anything: what lies outside is 0.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace quorvane {

template <class Number>
[[nodiscard]] Number hostNumber(std::span<const std::uint8_t> bytes, std::size_t offset) {
  Number value = 0;
  if (offset <= bytes.size() && bytes.size() - offset >= sizeof value) {
    std::memcpy(&value, bytes.data() + offset, sizeof value);
  }
  return value;
}

[[nodiscard]] inline std::uint16_t hostWord16(std::span<const std::uint8_t> bytes,
                                              std::size_t offset) {
  return hostNumber<std::uint16_t>(bytes, offset);
}

[[nodiscard]] inline std::uint32_t hostWord32(std::span<const std::uint8_t> bytes,
                                              std::size_t offset) {
  return hostNumber<std::uint32_t>(bytes, offset);
}

}  // namespace quorvane
