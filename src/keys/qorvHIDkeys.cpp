#include "src/keys/qorvHIDkeys.h"

#include <array>

namespace quorvane {
namespace {

constexpr std::uint32_t kFirstModifierKey = 55;
// Left command, left shift, caps lock, left option, left control.
constexpr std::array<std::uint32_t, 5> kDeviceMasks{0x100000, 0x20000, 0x10000, 0x80000, 0x40000};
constexpr std::uint32_t kEventVersion = 2;

std::uint32_t deviceMask(std::uint32_t keyCode) {
  const std::uint32_t index = keyCode - kFirstModifierKey;
  return index < kDeviceMasks.size() ? kDeviceMasks[index] : 0;
}

}  // namespace

std::uint32_t get_event_driver(Process& process) {
  auto& driver = process.state<HIDKeysState>().event_driver;
  if (driver == 0) driver = process.platform().eventPosting.IOServiceOpen();
  return driver;
}

void HIDPostVirtualKey(Process& process, std::uint32_t keyCode, bool keyUp) {
  EventPosting& posting = process.platform().eventPosting;
  const std::uint32_t connection = get_event_driver(process);
  const std::uint32_t code = keyCode & 0xFF;
  NXKeyEventData data;
  if (const std::uint32_t mask = deviceMask(code); mask != 0) {
    auto& modifiers = process.state<HIDKeysState>().gModifiers;
    modifiers = keyUp ? modifiers & ~mask : modifiers | mask;
    // The key code stays out of the event: the flags tell everything.
    posting.IOHIDPostEvent(connection, NX_FLAGSCHANGED, data, kEventVersion, modifiers,
                           kIOHIDSetGlobalEventFlags);
    return;
  }
  data.keyCode = static_cast<std::uint16_t>(code);
  posting.IOHIDPostEvent(connection, keyUp ? NX_KEYUP : NX_KEYDOWN, data, kEventVersion, 0, 0);
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

}  // namespace quorvane
