#pragma once
// The device route of event posting: bare modifier presses, as if the keyboard itself had spoken.
// Their purpose is to make the window server send the input method an event of its own.

#include "src/base/Instance.h"

namespace quorvane {

struct HIDKeysState {
  std::uint32_t gModifiers = 0;    ///< device masks regarded as held down; persists between calls
  std::uint32_t event_driver = 0;  ///< the HID connection, 0 until it opens
};

/// The HID connection, opened on first use; 0 where it doesn't open, and then tried again.
std::uint32_t get_event_driver(Instance& instance);

// Virtual key codes are cut to 8 bits.

/// Codes 55 to 59 are modifiers and go out as flags changed.
void HIDPostVirtualKey(Instance& instance, std::uint32_t keyCode, bool keyUp);
void HIDPressVirtualKey(Instance& instance, std::uint32_t keyCode);
void HIDReleaseVirtualKey(Instance& instance, std::uint32_t keyCode);
/// Press, 10 microseconds, release.
void HID_PressRelease_VirtualKey(Instance& instance, std::uint32_t keyCode);

/// Keys of no character set, such as those of volume and brightness.
void HIDPostSpecialKey(Instance& instance, std::uint32_t key, bool keyUp);
void HIDPressSpecialKey(Instance& instance, std::uint32_t key);
void HIDReleaseSpecialKey(Instance& instance, std::uint32_t key);
/// Without a pause.
void HID_PressRelease_SpecialKey(Instance& instance, std::uint32_t key);

}  // namespace quorvane
