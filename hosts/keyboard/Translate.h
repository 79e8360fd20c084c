#pragma once
// What a key yields on a keyboard layout, read from the layout's bytes. Shared by all hosts.

#include <cstddef>
#include <cstdint>
#include <span>

#include "hosts/journal/Journal.h"
#include "platform/UnicodeUtilities.h"

namespace quorvane::keyboard {

/// Of an ANSI keyboard.
inline constexpr std::uint32_t kKeyboardType = 40;

/// UCKeyTranslate from the layout alone. Of keyboard-type entries the one whose range holds the
/// type counts, or failing that the first. Modifiers beyond the layout's list use its default
/// table.
class Translator : public UnicodeUtilities {
 public:
  explicit Translator(Journal* journal = nullptr) : journal_(journal) {}

  OSStatus UCKeyTranslate(std::span<const std::uint8_t> keyLayout, std::uint16_t virtualKeyCode,
                          std::uint16_t keyAction, std::uint32_t modifierKeyState,
                          std::uint32_t keyboardType, std::uint32_t keyTranslateOptions,
                          std::uint32_t& deadKeyState, std::span<char16_t> unicodeString,
                          std::size_t& actualLength) override;
  std::uint32_t LMGetKbdType() override;

 private:
  Journal* journal_;  ///< of what the logic calls; null: none
};

}  // namespace quorvane::keyboard
