#pragma once
// The keys that type no character: the classic code that each gives in place of one, and the
// modifier keys. They are the same on every layout.

#include <array>
#include <cstdint>

#include "platform/AppKitEvents.h"

namespace quorvane::keyboard {

struct SpecialKey {
  std::uint16_t keyCode;
  char16_t code;
  bool function;  ///< carries the function modifier, as the keys above the arrows do
};

inline constexpr std::array<SpecialKey, 14> kSpecialKeys{{
    {36, 13, false},
    {76, 3, false},
    {48, 9, false},
    {51, 8, false},
    {53, 27, false},
    {123, 28, false},
    {124, 29, false},
    {125, 31, false},
    {126, 30, false},
    {115, 1, true},
    {119, 4, true},
    {116, 11, true},
    {121, 12, true},
    {117, 127, true},
}};

/// NSEvent flag of a modifier key, left or right; 0 for any other key.
[[nodiscard]] constexpr std::uint32_t modifierFlagOf(std::uint16_t keyCode) {
  switch (keyCode) {
    case 54:
    case 55:
      return NSEventModifierFlagCommand;
    case 56:
    case 60:
      return NSEventModifierFlagShift;
    case 57:
      return NSEventModifierFlagCapsLock;
    case 58:
    case 61:
      return NSEventModifierFlagOption;
    case 59:
    case 62:
      return NSEventModifierFlagControl;
    default:
      return 0;
  }
}

}  // namespace quorvane::keyboard
