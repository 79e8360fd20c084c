#pragma once
// The modifiers: as flags of an event, which are also the masks of the keyboard device, and in the
// classic mask.

#include <array>
#include <cstdint>

#include "platform/AppKitEvents.h"
#include "src/base/VirtualKeys.h"

namespace quorvane {

struct Modifier {
  std::uint32_t flag;
  std::uint32_t classic;
  std::uint16_t key, rightKey;  ///< 0: none by itself
};

inline constexpr std::array<Modifier, 6> kModifierTable{{
    {NSEventModifierFlagCommand, cmdKey, kVK_Command, kVK_RightCommand},
    {NSEventModifierFlagShift, shiftKey, kVK_Shift, kVK_RightShift},
    {NSEventModifierFlagCapsLock, alphaLock, kVK_CapsLock, 0},
    {NSEventModifierFlagOption, optionKey, kVK_Option, kVK_RightOption},
    {NSEventModifierFlagControl, controlKey, kVK_Control, kVK_RightControl},
    {NSEventModifierFlagFunction, kEventKeyModifierFnMask, 0, 0},
}};

/// The flag that a key changes, left or right; 0 for any other key.
[[nodiscard]] constexpr std::uint32_t modifierFlagOf(std::uint16_t key) {
  for (const Modifier& each : kModifierTable) {
    if (key != 0 && (each.key == key || each.rightKey == key)) return each.flag;
  }
  return 0;
}

/// The classic mask of an event's flags.
[[nodiscard]] constexpr std::uint32_t classicModifiers(std::uint32_t flags) {
  std::uint32_t mask = 0;
  for (const Modifier& each : kModifierTable) mask |= (flags & each.flag) != 0 ? each.classic : 0;
  return mask;
}

/// The flags of a classic mask.
[[nodiscard]] constexpr std::uint32_t flagsOfModifiers(std::uint32_t classic) {
  std::uint32_t flags = 0;
  for (const Modifier& each : kModifierTable)
    flags |= (classic & each.classic) != 0 ? each.flag : 0;
  return flags;
}

}  // namespace quorvane
