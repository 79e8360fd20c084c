#include "src/keys/qorvHIDkeys.h"

#include "src/base/Modifiers.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kEventVersion = 2;
constexpr std::uint16_t kNoCharacterSet = 0xFFFF;

// Of the left-hand keys only.
std::uint32_t deviceMask(std::uint32_t keyCode) {
  for (const Modifier& each : kModifierTable) {
    if (each.key != 0 && each.key == keyCode) return each.flag;
  }
  return 0;
}

void postKey(Process& process, std::uint32_t connection, const NXKeyEventData& data, bool keyUp) {
  process.platform().eventPosting.IOHIDPostEvent(connection, keyUp ? NX_KEYUP : NX_KEYDOWN, data,
                                                 kEventVersion, 0, 0);
}

}  // namespace

std::uint32_t get_event_driver(Process& process) {
  auto& driver = process.state<HIDKeysState>().event_driver;
  if (driver == 0) driver = process.platform().eventPosting.IOServiceOpen();
  return driver;
}

void HIDPostVirtualKey(Process& process, std::uint32_t keyCode, bool keyUp) {
  const std::uint32_t connection = get_event_driver(process);
  const std::uint32_t code = keyCode & 0xFF;
  NXKeyEventData data;
  if (const std::uint32_t mask = deviceMask(code); mask != 0) {
    auto& modifiers = process.state<HIDKeysState>().gModifiers;
    modifiers = keyUp ? modifiers & ~mask : modifiers | mask;
    // The key code stays out of the event: the flags tell everything.
    process.platform().eventPosting.IOHIDPostEvent(connection, NX_FLAGSCHANGED, data, kEventVersion,
                                                   modifiers, kIOHIDSetGlobalEventFlags);
    return;
  }
  data.keyCode = static_cast<std::uint16_t>(code);
  postKey(process, connection, data, keyUp);
}

void HIDPressVirtualKey(Process& process, std::uint32_t keyCode) {
  HIDPostVirtualKey(process, keyCode, false);
}

void HIDReleaseVirtualKey(Process& process, std::uint32_t keyCode) {
  HIDPostVirtualKey(process, keyCode, true);
}

void HID_PressRelease_VirtualKey(Process& process, std::uint32_t keyCode) {
  HIDPressVirtualKey(process, keyCode);
  process.platform().clock.usleep(10);
  HIDReleaseVirtualKey(process, keyCode);
}

void HIDPostSpecialKey(Process& process, std::uint32_t key, bool keyUp) {
  NXKeyEventData data;
  data.origCharSet = kNoCharacterSet;
  data.charSet = kNoCharacterSet;
  data.keyCode = static_cast<std::uint16_t>(key);
  postKey(process, get_event_driver(process), data, keyUp);
}

void HIDPressSpecialKey(Process& process, std::uint32_t key) {
  HIDPostSpecialKey(process, key, false);
}

void HIDReleaseSpecialKey(Process& process, std::uint32_t key) {
  HIDPostSpecialKey(process, key, true);
}

void HID_PressRelease_SpecialKey(Process& process, std::uint32_t key) {
  HIDPressSpecialKey(process, key);
  HIDReleaseSpecialKey(process, key);
}

}  // namespace quorvane
