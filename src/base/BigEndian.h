#pragma once
// Numbers as they lie in shared records, in packets and in resources: most significant byte first.

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>

namespace quorvane {

/// The number at `offset`, all of which must lie within `bytes`.
template <class Number>
[[nodiscard]] constexpr Number bigEndianNumber(std::span<const std::uint8_t> bytes,
                                               std::size_t offset = 0) {
  assert(offset <= bytes.size() && bytes.size() - offset >= sizeof(Number));
  std::uint64_t value = 0;
  for (const std::uint8_t byte : bytes.subspan(offset, sizeof(Number))) value = value << 8 | byte;
  return static_cast<Number>(value);
}

/// Puts the number at `offset`; all of it must fit into `bytes`.
template <class Number>
constexpr void putBigEndian(std::span<std::uint8_t> bytes, std::size_t offset, Number number) {
  assert(offset <= bytes.size() && bytes.size() - offset >= sizeof(Number));
  auto value = static_cast<std::uint64_t>(number);
  for (std::size_t i = sizeof(Number); i-- > 0; value >>= 8) {
    bytes[offset + i] = static_cast<std::uint8_t>(value);
  }
}

}  // namespace quorvane
