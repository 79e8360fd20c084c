#pragma once
// Which key of a US keyboard makes which character.

#include <cstdint>
#include <optional>
#include <string>

namespace quorvane::field {

struct Key {
  std::uint16_t keyCode = 0;
  bool shift = false;
  bool function = false;  ///< carries the function modifier, as the keys above the arrows do
};

/// The key for a typed character or one of the classic codes of `NSEvent::characters`. Empty where
/// the layout has no such key; a host then gives key code 0.
std::optional<Key> keyForCharacter(char32_t character);

/// The characters of a key under NSEvent modifier flags; empty for modifier and unknown keys.
std::u16string charactersForKey(std::uint16_t keyCode, std::uint32_t modifierFlags);

/// NSEvent modifier flags as the classic event modifier bits of 'kmod'.
std::uint32_t classicModifiers(std::uint32_t modifierFlags);

}  // namespace quorvane::field
