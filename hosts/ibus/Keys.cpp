#include "hosts/ibus/Keys.h"

#include <linux/input-event-codes.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <array>

#include "hosts/keyboard/SpecialKeys.h"
#include "hosts/xkb/SymbolText.h"
#include "src/base/Modifiers.h"

namespace quorvane::ibus {
namespace {

struct KeyCode {
  std::uint16_t evdev;
  std::uint16_t virtualKey;
};

constexpr auto kKeyCodes = std::to_array<KeyCode>({
    {KEY_GRAVE, 50},
    {KEY_1, 18},
    {KEY_2, 19},
    {KEY_3, 20},
    {KEY_4, 21},
    {KEY_5, 23},
    {KEY_6, 22},
    {KEY_7, 26},
    {KEY_8, 28},
    {KEY_9, 25},
    {KEY_0, 29},
    {KEY_MINUS, 27},
    {KEY_EQUAL, 24},
    {KEY_YEN, 93},
    {KEY_Q, 12},
    {KEY_W, 13},
    {KEY_E, 14},
    {KEY_R, 15},
    {KEY_T, 17},
    {KEY_Y, 16},
    {KEY_U, 32},
    {KEY_I, 34},
    {KEY_O, 31},
    {KEY_P, 35},
    {KEY_LEFTBRACE, 33},
    {KEY_RIGHTBRACE, 30},
    {KEY_BACKSLASH, 42},
    {KEY_A, 0},
    {KEY_S, 1},
    {KEY_D, 2},
    {KEY_F, 3},
    {KEY_G, 5},
    {KEY_H, 4},
    {KEY_J, 38},
    {KEY_K, 40},
    {KEY_L, 37},
    {KEY_SEMICOLON, 41},
    {KEY_APOSTROPHE, 39},
    {KEY_102ND, 10},
    {KEY_Z, 6},
    {KEY_X, 7},
    {KEY_C, 8},
    {KEY_V, 9},
    {KEY_B, 11},
    {KEY_N, 45},
    {KEY_M, 46},
    {KEY_COMMA, 43},
    {KEY_DOT, 47},
    {KEY_SLASH, 44},
    {KEY_RO, 94},
    {KEY_SPACE, kVK_Space},
    {KEY_KP0, 82},
    {KEY_KP1, 83},
    {KEY_KP2, 84},
    {KEY_KP3, 85},
    {KEY_KP4, 86},
    {KEY_KP5, 87},
    {KEY_KP6, 88},
    {KEY_KP7, 89},
    {KEY_KP8, 91},
    {KEY_KP9, 92},
    {KEY_KPDOT, 65},
    {KEY_KPASTERISK, 67},
    {KEY_KPPLUS, 69},
    {KEY_KPSLASH, 75},
    {KEY_KPMINUS, 78},
    {KEY_KPEQUAL, 81},
    {KEY_KPENTER, kVK_KeypadEnter},
    {KEY_ENTER, kVK_Return},
    {KEY_TAB, kVK_Tab},
    {KEY_ESC, kVK_Escape},
    {KEY_BACKSPACE, kVK_Delete},
    {KEY_DELETE, kVK_ForwardDelete},
    {KEY_HOME, kVK_Home},
    {KEY_END, kVK_End},
    {KEY_PAGEUP, kVK_PageUp},
    {KEY_PAGEDOWN, kVK_PageDown},
    {KEY_LEFT, kVK_LeftArrow},
    {KEY_RIGHT, kVK_RightArrow},
    {KEY_UP, kVK_UpArrow},
    {KEY_DOWN, kVK_DownArrow},
    {KEY_LEFTSHIFT, kVK_Shift},
    {KEY_RIGHTSHIFT, kVK_RightShift},
    {KEY_CAPSLOCK, kVK_CapsLock},
    {KEY_LEFTCTRL, kVK_Command},
    {KEY_RIGHTCTRL, kVK_RightCommand},
    {KEY_LEFTALT, kVK_Option},
    {KEY_RIGHTALT, kVK_RightOption},
    {KEY_LEFTMETA, kVK_Control},
    {KEY_RIGHTMETA, kVK_RightControl},
    {KEY_F1, 122},
    {KEY_F2, 120},
    {KEY_F3, 99},
    {KEY_F4, 118},
    {KEY_F5, 96},
    {KEY_F6, 97},
    {KEY_F7, 98},
    {KEY_F8, 100},
    {KEY_F9, 101},
    {KEY_F10, 109},
    {KEY_F11, 103},
    {KEY_F12, 111},
});

struct Symbol {
  std::uint32_t keyval;
  std::uint16_t virtualKey;
};

/// What a key is called whatever its place: the keypad's without num lock are others than with it.
constexpr auto kSymbols = std::to_array<Symbol>({
    {XKB_KEY_Return, kVK_Return},
    {XKB_KEY_KP_Enter, kVK_KeypadEnter},
    {XKB_KEY_Tab, kVK_Tab},
    {XKB_KEY_ISO_Left_Tab, kVK_Tab},
    {XKB_KEY_BackSpace, kVK_Delete},
    {XKB_KEY_Escape, kVK_Escape},
    {XKB_KEY_Left, kVK_LeftArrow},
    {XKB_KEY_KP_Left, kVK_LeftArrow},
    {XKB_KEY_Right, kVK_RightArrow},
    {XKB_KEY_KP_Right, kVK_RightArrow},
    {XKB_KEY_Down, kVK_DownArrow},
    {XKB_KEY_KP_Down, kVK_DownArrow},
    {XKB_KEY_Up, kVK_UpArrow},
    {XKB_KEY_KP_Up, kVK_UpArrow},
    {XKB_KEY_Home, kVK_Home},
    {XKB_KEY_KP_Home, kVK_Home},
    {XKB_KEY_End, kVK_End},
    {XKB_KEY_KP_End, kVK_End},
    {XKB_KEY_Page_Up, kVK_PageUp},
    {XKB_KEY_KP_Page_Up, kVK_PageUp},
    {XKB_KEY_Page_Down, kVK_PageDown},
    {XKB_KEY_KP_Page_Down, kVK_PageDown},
    {XKB_KEY_Delete, kVK_ForwardDelete},
    {XKB_KEY_KP_Delete, kVK_ForwardDelete},
    {XKB_KEY_Linefeed, kVK_Return},
});

struct StateFlag {
  std::uint32_t state;
  std::uint32_t flag;
};
constexpr std::array<StateFlag, 5> kStateFlags{{{kShiftState, NSEventModifierFlagShift},
                                                {kLockState, NSEventModifierFlagCapsLock},
                                                {kControlState, NSEventModifierFlagCommand},
                                                {kAltGrState, NSEventModifierFlagOption},
                                                {kSuperState, NSEventModifierFlagControl}}};

std::uint32_t flagsOf(std::uint32_t state) {
  std::uint32_t flags = 0;
  for (const StateFlag& each : kStateFlags) flags |= (state & each.state) != 0 ? each.flag : 0;
  const bool chord = (state & (kControlState | kSuperState)) != 0;
  if (chord && (state & kAltState) != 0) flags |= NSEventModifierFlagOption;
  return flags;
}

bool isAltAlone(std::uint32_t state) {
  return (state & kAltState) != 0 && (state & (kControlState | kSuperState)) == 0;
}

const keyboard::SpecialKey* specialKey(std::uint16_t virtualKey) {
  const auto found =
      std::ranges::find(keyboard::kSpecialKeys, virtualKey, &keyboard::SpecialKey::keyCode);
  return found == keyboard::kSpecialKeys.end() ? nullptr : &*found;
}

const keyboard::SpecialKey* specialKeyOf(std::uint32_t keyval) {
  const auto found = std::ranges::find(kSymbols, keyval, &Symbol::keyval);
  return found == kSymbols.end() ? nullptr : specialKey(found->virtualKey);
}

/// The state is that before the key: caps lock changes when it is pressed, the others by both.
std::optional<NSEvent> modifierChange(const Key& key, std::uint16_t virtualKey,
                                      std::uint32_t modifier) {
  const bool release = (key.state & kReleaseState) != 0;
  const bool locks = modifier == NSEventModifierFlagCapsLock;
  if (locks && release) return std::nullopt;
  const std::uint32_t before = flagsOf(key.state);
  const bool on = locks ? (before & modifier) == 0 : !release;
  return NSEvent{.type = NSEventType::FlagsChanged,
                 .modifierFlags = on ? before | modifier : before & ~modifier,
                 .keyCode = virtualKey,
                 .characters = {},
                 .eventRef = nullptr};
}

std::u16string charactersOf(const Key& key, const std::u16string* composed) {
  return composed != nullptr ? *composed : xkb::textOf(key.keyval);
}

}  // namespace

std::optional<std::uint16_t> virtualKeyOf(std::uint32_t keycode) {
  const auto found = std::ranges::find(kKeyCodes, keycode, &KeyCode::evdev);
  return found == kKeyCodes.end() ? std::nullopt : std::optional(found->virtualKey);
}

std::optional<NSEvent> eventOf(const Key& key, const std::u16string* composed) {
  const auto virtualKey = virtualKeyOf(key.keycode);
  if (virtualKey) {
    const std::uint32_t modifier = modifierFlagOf(*virtualKey);
    if (modifier != 0) return modifierChange(key, *virtualKey, modifier);
  }
  if (isAltAlone(key.state)) return std::nullopt;
  const bool release = (key.state & kReleaseState) != 0;
  NSEvent event{.type = release ? NSEventType::KeyUp : NSEventType::KeyDown,
                .modifierFlags = flagsOf(key.state),
                .keyCode = virtualKey.value_or(0),
                .characters = {},
                .eventRef = nullptr};
  if (const keyboard::SpecialKey* special = specialKeyOf(key.keyval)) {
    event.keyCode = special->keyCode;
    event.characters = special->code;
    if (special->function) event.modifierFlags |= NSEventModifierFlagFunction;
    return event;
  }
  event.characters = charactersOf(key, composed);
  if (event.characters.empty() && composed == nullptr) return std::nullopt;
  return event;
}

std::optional<Key> keyOf(const NSEvent& event) {
  const auto found = std::ranges::find(kKeyCodes, event.keyCode, &KeyCode::virtualKey);
  if (found == kKeyCodes.end()) return std::nullopt;
  Key key{.keyval = 0, .keycode = found->evdev, .state = 0};
  for (const StateFlag& each : kStateFlags) {
    if ((event.modifierFlags & each.flag) != 0) key.state |= each.state;
  }
  const auto symbol = std::ranges::find(kSymbols, event.keyCode, &Symbol::virtualKey);
  if (symbol != kSymbols.end()) {
    key.keyval = symbol->keyval;
  } else if (event.characters.size() == 1) {
    key.keyval = xkb_utf32_to_keysym(event.characters.front());
  }
  if (key.keyval == 0) return std::nullopt;
  if (event.type == NSEventType::KeyUp) key.state |= kReleaseState;
  return key;
}

}  // namespace quorvane::ibus
