#pragma once
// A key as IBus tells of it, as the event that it is for an input method. Pure functions.

#include <cstdint>
#include <optional>
#include <string>

#include "platform/AppKitEvents.h"

namespace quorvane::ibus {

/// As in `process_key_event`.
struct Key {
  std::uint32_t keyval = 0;   ///< X key symbol, after the layout
  std::uint32_t keycode = 0;  ///< evdev, as in linux/input-event-codes.h
  std::uint32_t state = 0;    ///< modifiers before the event; bit 30: a release
  bool operator==(const Key&) const = default;
};

inline constexpr std::uint32_t kShiftState = 1;
inline constexpr std::uint32_t kLockState = 1 << 1;
inline constexpr std::uint32_t kControlState = 1 << 2;
inline constexpr std::uint32_t kAltState = 1 << 3;
inline constexpr std::uint32_t kSuperState = 1 << 6 | 1 << 26;
inline constexpr std::uint32_t kAltGrState = 1 << 7;
inline constexpr std::uint32_t kReleaseState = 1 << 30;

/// Control is the platform's command key, Super its control key, AltGr its option key, and so is
/// Alt beside one of the first two. Alt alone is the application's: none. None, too, where the key
/// isn't one that the platform has. `composed` is what dead keys before it make of the key.
std::optional<NSEvent> eventOf(const Key& key, const std::u16string* composed = nullptr);

/// The virtual key code; none: there is no such key on the platform's keyboard.
std::optional<std::uint16_t> virtualKeyOf(std::uint32_t keycode);

/// What presses or releases `event`'s key in a client; none where there is no such key. A chord of
/// the command key is one of Control.
std::optional<Key> keyOf(const NSEvent& event);

}  // namespace quorvane::ibus
