#pragma once
// NSEvent as the text-input framework hands it over.

#include <string>

#include "platform/CarbonEvents.h"

namespace quorvane {

enum class NSEventType : std::uint32_t {
  LeftMouseDown = 1,
  LeftMouseUp = 2,
  KeyDown = 10,
  KeyUp = 11,
  FlagsChanged = 12,
  OtherMouseDown = 25,
  OtherMouseUp = 26,
};

inline constexpr std::uint32_t NSEventModifierFlagCapsLock = 0x10000;
inline constexpr std::uint32_t NSEventModifierFlagShift = 0x20000;
inline constexpr std::uint32_t NSEventModifierFlagControl = 0x40000;
inline constexpr std::uint32_t NSEventModifierFlagOption = 0x80000;
inline constexpr std::uint32_t NSEventModifierFlagCommand = 0x100000;
inline constexpr std::uint32_t NSEventModifierFlagFunction = 0x800000;

/// A host delivers the classic codes in `characters`: left 28, right 29, up 30, down 31, page up
/// 11, page down 12, home 1, end 4, escape 27, enter 3, return 13, backspace 8, forward delete 127.
struct NSEvent {
  NSEventType type = NSEventType::KeyDown;
  std::uint32_t modifierFlags = 0;
  std::uint16_t keyCode = 0;
  std::u16string characters;
  EventRef eventRef = nullptr;  ///< null: this event has no Carbon record behind it
};

}  // namespace quorvane
