#pragma once
// Carbon events: the record behind a key event, and the few questions asked of the event manager.

#include <array>
#include <optional>

#include "platform/MacTypes.h"
#include "platform/Units.h"

namespace quorvane {

inline constexpr FourCharCode kEventClassKeyboard = "keyb"_4cc;
inline constexpr FourCharCode kEventClassMouse = "mous"_4cc;

inline constexpr std::uint32_t kEventRawKeyDown = 1;
inline constexpr std::uint32_t kEventRawKeyRepeat = 2;
inline constexpr std::uint32_t kEventRawKeyUp = 3;
inline constexpr std::uint32_t kEventRawKeyModifiersChanged = 4;
inline constexpr std::uint32_t kEventMouseDown = 1;

/// The classic event modifier bits, as 'kmod' holds them.
inline constexpr std::uint32_t cmdKey = 0x100;
inline constexpr std::uint32_t shiftKey = 0x200;
inline constexpr std::uint32_t alphaLock = 0x400;
inline constexpr std::uint32_t optionKey = 0x800;
inline constexpr std::uint32_t controlKey = 0x1000;
inline constexpr std::uint32_t rightOptionKey = 0x4000;
inline constexpr std::uint32_t rightControlKey = 0x8000;
inline constexpr std::uint32_t kEventKeyModifierFnMask = 0x20000;

/// One event. A parameter that the event doesn't carry is empty.
struct CarbonEvent {
  FourCharCode eventClass = 0;
  std::uint32_t kind = 0;
  Seconds time{};                     ///< since start-up
  std::optional<std::uint8_t> kchr;   ///< 'kchr', type 'TEXT', 1 byte
  std::optional<std::uint32_t> kmod;  ///< 'kmod', type 'magn', 4 bytes
  std::optional<std::uint32_t> kcod;  ///< 'kcod', type 'magn', 4 bytes
  std::optional<HIPoint> mloc;        ///< 'mloc', type 'hipt', two doubles
};

using EventRef = const CarbonEvent*;

/// A bit for each key code: bit `code & 7` of byte `code >> 3`.
using KeyMap = std::array<std::uint8_t, 16>;

class CarbonEvents {
 public:
  virtual ~CarbonEvents() = default;

  /// Fills `event` with an event without parameters. False where none can be made.
  virtual bool CreateEvent(FourCharCode eventClass, std::uint32_t kind, Seconds when,
                           CarbonEvent& event) = 0;
  /// The modifiers held at this moment, in the classic mask.
  virtual std::uint32_t GetCurrentKeyModifiers() = 0;
  /// The keys held at this moment.
  virtual void GetKeys(KeyMap& keys) = 0;
  /// A button of the mouse is down at this moment.
  virtual bool Button() = 0;
  /// True where the user has asked to stop (Command-period). The caller may ignore it.
  virtual bool CheckEventQueueForUserCancel() = 0;
};

}  // namespace quorvane
