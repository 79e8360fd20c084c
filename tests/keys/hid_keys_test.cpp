#include <gtest/gtest.h>

#include "hosts/memory/MemoryHost.h"
#include "src/keys/qorvHIDkeys.h"

namespace quorvane {
namespace {

struct HIDKeys : testing::Test {
  std::vector<NSEvent> posted() {
    std::vector<NSEvent> events;
    while (auto event = host.queue.take()) events.push_back(*event);
    return events;
  }
  std::uint32_t modifiers() { return instance.state<HIDKeysState>().gModifiers; }

  memory::MemoryHost host;
  Instance instance{host.platform()};
};

TEST_F(HIDKeys, ModifiersGoOutAsFlagsChangedWithEverythingThatIsHeld) {
  HIDPressVirtualKey(instance, 56);
  HIDPressVirtualKey(instance, 56);
  HIDPressVirtualKey(instance, 0x100 + 55);  // cut to 8 bits
  HIDReleaseVirtualKey(instance, 56);
  HIDReleaseVirtualKey(instance, 55);
  std::vector<std::uint32_t> flags;
  for (const auto& event : posted()) {
    EXPECT_EQ(event.type, NSEventType::FlagsChanged);
    EXPECT_EQ(event.keyCode, 0) << "the key code isn't in the event";
    flags.push_back(event.modifierFlags);
  }
  EXPECT_EQ(flags, (std::vector<std::uint32_t>{0x20000, 0x20000, 0x120000, 0x100000, 0}));
}

TEST_F(HIDKeys, AConnectionThatDoesNotOpenIsTriedAgainAndThePostStillRuns) {
  host.eventPosting.serviceOpenFails = true;
  HIDPressVirtualKey(instance, 56);
  EXPECT_EQ(host.journal.lines().back().find("IOHIDPostEvent"), 0u);
  host.eventPosting.serviceOpenFails = false;
  EXPECT_NE(get_event_driver(instance), 0u);
}

TEST_F(HIDKeys, SpecialKeysHaveNoCharacterSetAndNoPause) {
  HID_PressRelease_SpecialKey(instance, 0x107);
  EXPECT_EQ(host.journal.take(),
            (std::vector<std::string>{"IOServiceOpen", "IOHIDPostEvent keyDown 263 special",
                                      "IOHIDPostEvent keyUp 263 special"}));
}

}  // namespace
}  // namespace quorvane
