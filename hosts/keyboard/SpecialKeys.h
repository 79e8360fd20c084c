#pragma once
// The keys that type no character, and the classic code that each gives in place of one. They are
// the same on every layout.

#include <array>
#include <cstdint>

#include "src/base/KeyBytes.h"
#include "src/base/VirtualKeys.h"

namespace quorvane::keyboard {

struct SpecialKey {
  std::uint16_t keyCode;
  char16_t code;
  bool function;  ///< carries the function modifier, as the keys above the arrows do
};

inline constexpr std::array<SpecialKey, 14> kSpecialKeys{{
    {kVK_Return, kReturnKey, false},
    {kVK_KeypadEnter, kEnterKey, false},
    {kVK_Tab, kTabKey, false},
    {kVK_Delete, kBackspaceKey, false},
    {kVK_Escape, kEscapeKey, false},
    {kVK_LeftArrow, kLeftArrowKey, false},
    {kVK_RightArrow, kRightArrowKey, false},
    {kVK_DownArrow, kDownArrowKey, false},
    {kVK_UpArrow, kUpArrowKey, false},
    {kVK_Home, kHomeKey, true},
    {kVK_End, kEndKey, true},
    {kVK_PageUp, kPageUpKey, true},
    {kVK_PageDown, kPageDownKey, true},
    {kVK_ForwardDelete, kDeleteKey, true},
}};

}  // namespace quorvane::keyboard
