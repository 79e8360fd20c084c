#pragma once
// Unicode Utilities: what a key yields on a keyboard layout.

#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/MacTypes.h"

namespace quorvane {

inline constexpr OSStatus kUCOutputBufferTooSmall = -25340;

inline constexpr std::uint16_t kUCKeyActionDown = 0;
inline constexpr std::uint16_t kUCKeyActionUp = 1;
inline constexpr std::uint16_t kUCKeyActionAutoKey = 2;
inline constexpr std::uint16_t kUCKeyActionDisplay = 3;
inline constexpr std::uint32_t kUCKeyTranslateNoDeadKeysMask = 1;

class UnicodeUtilities {
 public:
  virtual ~UnicodeUtilities() = default;

  /// What the key yields, into `unicodeString`; its length in UTF-16 units into `actualLength`.
  /// `modifierKeyState`: the classic modifier word, shifted right by 8. `deadKeyState` is 0 where
  /// no dead key is pending; the state behind this key comes back in it. kUCOutputBufferTooSmall
  /// where the output doesn't fit; paramErr where the bytes are no layout. Nothing outside
  /// `keyLayout` is read, whatever it says.
  virtual OSStatus UCKeyTranslate(std::span<const std::uint8_t> keyLayout,
                                  std::uint16_t virtualKeyCode, std::uint16_t keyAction,
                                  std::uint32_t modifierKeyState, std::uint32_t keyboardType,
                                  std::uint32_t keyTranslateOptions, std::uint32_t& deadKeyState,
                                  std::span<char16_t> unicodeString, std::size_t& actualLength) = 0;
  /// Type of the physical keyboard. The low 8 bits count.
  virtual std::uint32_t LMGetKbdType() = 0;
};

}  // namespace quorvane
