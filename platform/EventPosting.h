#pragma once
// The device route of event posting: the HID system.

#include <cstdint>

namespace quorvane {

inline constexpr std::uint32_t NX_KEYDOWN = 10;
inline constexpr std::uint32_t NX_KEYUP = 11;
inline constexpr std::uint32_t NX_FLAGSCHANGED = 12;
inline constexpr std::uint32_t kIOHIDSetGlobalEventFlags = 1;

/// The key record of an NXEventData of 48 bytes. Every byte that isn't named here is 0.
struct NXKeyEventData {
  std::uint16_t origCharSet = 0;
  std::int16_t repeat = 0;
  std::uint16_t charSet = 0;
  std::uint16_t charCode = 0;
  std::uint16_t keyCode = 0;
  std::uint16_t origCharCode = 0;
};

class EventPosting {
 public:
  virtual ~EventPosting() = default;

  /// Connection of type 1 (HID parameters) to the first service "IOHIDSystem"; 0 on failure.
  virtual std::uint32_t IOServiceOpen() = 0;
  /// Posts as if the keyboard had spoken. What comes of it (flags changed for a modifier) is queued
  /// and reaches the front client after the event in progress has returned.
  virtual std::int32_t IOHIDPostEvent(std::uint32_t connection, std::uint32_t type,
                                      const NXKeyEventData& data, std::uint32_t version,
                                      std::uint32_t flags, std::uint32_t options) = 0;
};

}  // namespace quorvane
