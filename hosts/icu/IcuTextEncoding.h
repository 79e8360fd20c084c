#pragma once
// Text encodings by ICU, shared by every host.

#include <array>

#include "platform/TextEncoding.h"

namespace quorvane {

/// Reads the Mac OS Roman table out of ICU once; converting then neither allocates nor locks.
class IcuTextEncoding final : public TextEncoding {
 public:
  IcuTextEncoding();

  /// Whole UTF-16 units only: what doesn't fit `capacity` is cut.
  std::ptrdiff_t TECConvertText(std::span<const std::uint8_t> roman, std::uint8_t* out,
                                std::size_t capacity) override;
  /// Unit by unit.
  bool CFStringGetCString(std::u16string_view text, std::span<std::uint8_t> out) override;
  /// Strict: overlong forms, surrogates in UTF-8, bytes from 128 up in ASCII and half a UTF-16 unit
  /// are all invalid.
  std::optional<std::u16string> initWithData(std::span<const std::uint8_t> bytes,
                                             NSStringEncoding encoding) override;

 private:
  std::array<char16_t, 256> roman_{};
  bool hasRoman_ = false;
};

}  // namespace quorvane
