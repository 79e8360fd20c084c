#pragma once
// Which bytes are what. Bytes are Mac OS Roman.

#include <cstdint>

namespace quorvane {

[[nodiscard]] constexpr bool isAscii(std::uint8_t byte) { return byte < 0x80; }

[[nodiscard]] constexpr bool isAsciiLetter(std::uint8_t byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

/// The word-character test of the system.
[[nodiscard]] constexpr bool valid_chr(std::uint8_t byte) {
  return isAsciiLetter(byte) || byte == '&';
}

}  // namespace quorvane
