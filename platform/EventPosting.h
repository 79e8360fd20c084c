#pragma once
// Pressing keys: events posted to a process or to the session (Quartz), and the device route, the
// HID system.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/MacTypes.h"

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

enum class CGEventType : std::uint32_t { Null = 0, MouseMoved = 5, KeyDown = 10, KeyUp = 11 };

inline constexpr std::int32_t kCGEventSourceStatePrivate = -1;
inline constexpr std::int32_t kCGEventSourceStateCombinedSessionState = 0;
inline constexpr std::uint32_t kCGHIDEventTap = 0;

struct CGEventSource {
  std::int32_t stateID = 0;
};

/// The flags are those of NSEvent.
struct CGEvent {
  CGEventType type = CGEventType::Null;
  std::uint16_t virtualKey = 0;
  std::uint64_t flags = 0;
  /// What the key types; empty: what the keyboard layout makes of it.
  std::u16string unicodeString;
  NSPoint location;
  std::uint32_t mouseButton = 0;
};

/// Released by reset. May be null.
using CGEventSourceRef = std::shared_ptr<CGEventSource>;
using CGEventRef = std::shared_ptr<CGEvent>;

/// What is posted is queued. It reaches the client after the event in progress has returned, in the
/// order of posting, before anything that is typed later.
class EventPosting {
 public:
  virtual ~EventPosting() = default;

  // The event route. A source may be null; what fails to be made is null, and posting null or
  // releasing it does nothing.

  virtual CGEventSourceRef CGEventSourceCreate(std::int32_t stateID) = 0;
  /// Its location is that of the mouse.
  virtual CGEventRef CGEventCreate(CGEventSource* source) = 0;
  virtual CGEventRef CGEventCreateKeyboardEvent(CGEventSource* source, std::uint16_t virtualKey,
                                                bool keyDown) = 0;
  virtual CGEventRef CGEventCreateMouseEvent(CGEventSource* source, CGEventType type,
                                             NSPoint location, std::uint32_t button) = 0;
  /// Screen points of the main display, y upwards from its lower edge. The origin for null.
  virtual NSPoint CGEventGetLocation(const CGEvent* event) = 0;
  virtual void CGEventSetFlags(CGEvent* event, std::uint64_t flags) = 0;
  virtual void CGEventKeyboardSetUnicodeString(CGEvent* event, std::u16string_view text) = 0;
  /// A process that isn't there gets nothing.
  virtual void CGEventPostToPSN(const ProcessSerialNumber& psn, const CGEvent* event) = 0;
  /// To whatever is in front. The event of a modifier key becomes flags changed.
  virtual void CGEventPost(std::uint32_t tap, const CGEvent* event) = 0;
  /// Whether the device's own events wait while this process posts.
  virtual void CGInhibitLocalEvents(bool inhibit) = 0;
  /// Whether posted modifiers combine with those that are held.
  virtual void CGEnableEventStateCombining(bool combine) = 0;

  // The device route.

  /// Connection of type 1 (HID parameters) to the first service "IOHIDSystem"; 0 on failure.
  virtual std::uint32_t IOServiceOpen() = 0;
  /// Posts as if the keyboard had spoken, to whatever is in front: a key, or flags changed for a
  /// modifier.
  virtual std::int32_t IOHIDPostEvent(std::uint32_t connection, std::uint32_t type,
                                      const NXKeyEventData& data, std::uint32_t version,
                                      std::uint32_t flags, std::uint32_t options) = 0;
};

}  // namespace quorvane
