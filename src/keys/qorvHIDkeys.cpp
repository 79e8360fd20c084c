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

void postKey(Instance& instance, std::uint32_t connection, const NXKeyEventData& data, bool keyUp) {
  instance.platform().eventPosting.IOHIDPostEvent(connection, keyUp ? NX_KEYUP : NX_KEYDOWN, data,
                                                  kEventVersion, 0, 0);
}

}  // namespace

std::uint32_t get_event_driver(Instance& instance) {
  auto& driver = instance.state<HIDKeysState>().event_driver;
  if (driver == 0) driver = instance.platform().eventPosting.IOServiceOpen();
  return driver;
}

void HIDPostVirtualKey(Instance& instance, std::uint32_t keyCode, bool keyUp) {
  const std::uint32_t connection = get_event_driver(instance);
  const std::uint32_t code = keyCode & 0xFF;
  NXKeyEventData data;
  if (const std::uint32_t mask = deviceMask(code); mask != 0) {
    auto& modifiers = instance.state<HIDKeysState>().gModifiers;
    modifiers = keyUp ? modifiers & ~mask : modifiers | mask;
    // The key code stays out of the event: the flags tell everything.
    instance.platform().eventPosting.IOHIDPostEvent(
        connection, NX_FLAGSCHANGED, data, kEventVersion, modifiers, kIOHIDSetGlobalEventFlags);
    return;
  }
  data.keyCode = static_cast<std::uint16_t>(code);
  postKey(instance, connection, data, keyUp);
}

void HIDPressVirtualKey(Instance& instance, std::uint32_t keyCode) {
  HIDPostVirtualKey(instance, keyCode, false);
}

void HIDReleaseVirtualKey(Instance& instance, std::uint32_t keyCode) {
  HIDPostVirtualKey(instance, keyCode, true);
}

void HID_PressRelease_VirtualKey(Instance& instance, std::uint32_t keyCode) {
  HIDPressVirtualKey(instance, keyCode);
  instance.platform().clock.usleep(Microseconds(10));
  HIDReleaseVirtualKey(instance, keyCode);
}

void HIDPostSpecialKey(Instance& instance, std::uint32_t key, bool keyUp) {
  NXKeyEventData data;
  data.origCharSet = kNoCharacterSet;
  data.charSet = kNoCharacterSet;
  data.keyCode = static_cast<std::uint16_t>(key);
  postKey(instance, get_event_driver(instance), data, keyUp);
}

void HIDPressSpecialKey(Instance& instance, std::uint32_t key) {
  HIDPostSpecialKey(instance, key, false);
}

void HIDReleaseSpecialKey(Instance& instance, std::uint32_t key) {
  HIDPostSpecialKey(instance, key, true);
}

void HID_PressRelease_SpecialKey(Instance& instance, std::uint32_t key) {
  HIDPressSpecialKey(instance, key);
  HIDReleaseSpecialKey(instance, key);
}

}  // namespace quorvane
