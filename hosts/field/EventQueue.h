#pragma once
// Events that the input method posted and that wait for their delivery.

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>

#include "hosts/keyboard/Keyboard.h"
#include "hosts/keyboard/StandardLayouts.h"
#include "platform/AppKitEvents.h"
#include "platform/EventPosting.h"

namespace quorvane::field {

/// Quartz and the HID system of a text-field application: what is posted comes back as events, in
/// order. A key has its code, its flags and what it types; a modifier key comes as flags changed.
/// Mouse moves go nowhere. Of the device route any other type or version is refused with a nonzero
/// result, and so are flags that don't come as the global ones.
class EventQueue : public EventPosting {
 public:
  CGEventSourceRef CGEventSourceCreate(std::int32_t stateID) override;
  CGEventRef CGEventCreate(CGEventSource* source) override;
  CGEventRef CGEventCreateKeyboardEvent(CGEventSource* source, std::uint16_t virtualKey,
                                        bool keyDown) override;
  CGEventRef CGEventCreateMouseEvent(CGEventSource* source, CGEventType type, NSPoint location,
                                     std::uint32_t button) override;
  NSPoint CGEventGetLocation(const CGEvent* event) override;
  void CGEventSetFlags(CGEvent* event, std::uint64_t flags) override;
  void CGEventKeyboardSetUnicodeString(CGEvent* event, std::u16string_view text) override;
  void CGEventPostToPSN(const ProcessSerialNumber& psn, const CGEvent* event) override;
  void CGEventPost(std::uint32_t tap, const CGEvent* event) override;
  void CGInhibitLocalEvents(bool /*inhibit*/) override {}
  void CGEnableEventStateCombining(bool /*combine*/) override {}
  std::uint32_t IOServiceOpen() override { return 1; }
  std::int32_t IOHIDPostEvent(std::uint32_t connection, std::uint32_t type,
                              const NXKeyEventData& data, std::uint32_t version,
                              std::uint32_t flags, std::uint32_t options) override;

  /// The oldest event; empty where none waits.
  std::optional<NSEvent> take();
  [[nodiscard]] std::size_t size() const { return events_.size(); }
  void clear() { events_.clear(); }

  /// The keyboard that the keys are on.
  [[nodiscard]] keyboard::Keyboard& keyboard() { return keyboard_; }

  /// The layout in force; asked for at each key.
  std::function<keyboard::LayoutData()> layout = keyboard::usLayout;
  /// Whether the text fields are that process's. What is posted to any other is lost here.
  std::function<bool(const ProcessSerialNumber&)> reaches = [](const ProcessSerialNumber& psn) {
    return psn != ProcessSerialNumber{};
  };
  std::function<NSPoint()> mouseLocation = [] { return NSPoint{}; };

 private:
  void push(const CGEvent* event);

  keyboard::Keyboard keyboard_{[this] { return layout(); }};
  std::deque<NSEvent> events_;
};

}  // namespace quorvane::field
