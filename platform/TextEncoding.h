#pragma once
// Text Encoding Converter and NSString's decoding of bytes.

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/MacTypes.h"

namespace quorvane {

enum class NSStringEncoding : std::uint32_t {
  ASCII = 1,
  UTF8 = 4,
  ShiftJIS = 8,
  UTF16LittleEndian = 0x94000100,
};

class TextEncoding {
 public:
  virtual ~TextEncoding() = default;

  /// Mac OS Roman to UTF-16 in little-endian bytes, at most `capacity` of them into `out`. Returns
  /// the number of bytes written, or -1 where no converter can be had or the text can't be
  /// converted.
  virtual std::ptrdiff_t TECConvertText(std::span<const std::uint8_t> roman, std::uint8_t* out,
                                        std::size_t capacity) = 0;
  /// The text in Mac OS Roman and a 0 behind it. False, with `out` as it was, where a character has
  /// no place there or it doesn't fit.
  virtual bool CFStringGetCString(std::u16string_view text, std::span<std::uint8_t> out) = 0;
  /// Empty where the bytes aren't valid in the encoding. No bytes give an empty string.
  virtual std::optional<std::u16string> initWithData(std::span<const std::uint8_t> bytes,
                                                     NSStringEncoding encoding) = 0;
};

}  // namespace quorvane
