#pragma once
// Makes the bytes of a keyboard layout (platform/UCKeyboardLayout.h) from tables of what each key
// types.

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace quorvane::keyboard {

inline constexpr std::size_t kKeyCount = 128;
inline constexpr std::size_t kModifierStates = 256;  ///< right-hand modifiers included

using LayoutData = std::shared_ptr<const std::vector<std::uint8_t>>;

/// What one key types under one combination of modifiers.
struct KeyOutput {
  std::u16string text;        ///< empty: nothing
  std::uint16_t deadKey = 0;  ///< nonzero: begins that dead key, and `text` is empty
};

struct DeadKey {
  std::u16string terminator;                          ///< what it leaves where nothing composes
  std::map<std::u16string, std::u16string> composed;  ///< by what the next key types
};

struct LayoutTables {
  std::vector<std::array<KeyOutput, kKeyCount>> tables;
  /// Table of each modifier key state (classic modifier word, shifted right by 8).
  std::array<std::uint8_t, kModifierStates> tableOf{};
  std::vector<DeadKey> deadKeys;  ///< numbered from 1
};

/// Throws std::length_error where the format has no room for that many texts, dead keys or tables.
LayoutData writeLayout(const LayoutTables& tables);

}  // namespace quorvane::keyboard
