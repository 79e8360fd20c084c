#pragma once
// Plain types of the platform that every interface shares.

#include <cstddef>
#include <cstdint>

namespace quorvane {

using OSStatus = std::int32_t;
inline constexpr OSStatus noErr = 0;
inline constexpr OSStatus ioErr = -36;
inline constexpr OSStatus eofErr = -39;
inline constexpr OSStatus fnfErr = -43;
inline constexpr OSStatus paramErr = -50;
inline constexpr OSStatus wrPermErr = -61;
inline constexpr OSStatus procNotFound = -600;

/// Four characters in 32 bits, the first in the top byte.
using FourCharCode = std::uint32_t;

/// `"QVPX"_4cc`. Anything but four characters doesn't compile.
consteval FourCharCode operator""_4cc(const char* text, std::size_t length) {
  if (length != 4) throw "a four-character code has four characters";
  FourCharCode code = 0;
  for (std::size_t i = 0; i < 4; ++i) code = (code << 8) | static_cast<unsigned char>(text[i]);
  return code;
}

/// A process as the Process Manager names it. Both words 0: no process.
struct ProcessSerialNumber {
  std::uint32_t highLongOfPSN = 0;
  std::uint32_t lowLongOfPSN = 0;
  bool operator==(const ProcessSerialNumber&) const = default;
};

/// Stands for "kCurrentProcess" where a serial number is asked for.
inline constexpr ProcessSerialNumber kCurrentProcess{0, 2};

inline constexpr std::uint64_t NSNotFound = 0x7fffffffffffffff;

/// Counted in UTF-16 units.
struct NSRange {
  std::uint64_t location = 0;
  std::uint64_t length = 0;
  bool operator==(const NSRange&) const = default;
};

/// In screen points, y upwards.
struct NSPoint {
  double x = 0;
  double y = 0;
  bool operator==(const NSPoint&) const = default;
};

/// Screen points; the origin of a screen rectangle is its bottom left corner.
struct NSRect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  bool operator==(const NSRect&) const = default;
};

struct HIPoint {
  double x = 0;
  double y = 0;
};

}  // namespace quorvane
