#pragma once
// Virtual key codes: the keys that lie in the same place on every keyboard.

#include <cstdint>

namespace quorvane {

enum VirtualKey : std::uint16_t {
  kVK_Return = 36,
  kVK_Tab = 48,
  kVK_Space = 49,
  kVK_Delete = 51,
  kVK_Escape = 53,
  kVK_RightCommand = 54,
  kVK_Command = 55,
  kVK_Shift = 56,
  kVK_CapsLock = 57,
  kVK_Option = 58,
  kVK_Control = 59,
  kVK_RightShift = 60,
  kVK_RightOption = 61,
  kVK_RightControl = 62,
  kVK_KeypadEnter = 76,
  kVK_Home = 115,
  kVK_PageUp = 116,
  kVK_ForwardDelete = 117,
  kVK_End = 119,
  kVK_PageDown = 121,
  kVK_LeftArrow = 123,
  kVK_RightArrow = 124,
  kVK_DownArrow = 125,
  kVK_UpArrow = 126,
};

}  // namespace quorvane
