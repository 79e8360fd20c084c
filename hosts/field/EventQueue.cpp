#include "hosts/field/EventQueue.h"

#include <utility>

#include "src/base/Modifiers.h"

namespace quorvane::field {
namespace {

constexpr std::int32_t kIOReturnBadArgument = -536870206;
constexpr std::uint32_t kNXEventDataVersion = 2;

NSEvent modifierChange(const CGEvent& event, std::uint32_t modifier) {
  const auto flags = static_cast<std::uint32_t>(event.flags);
  const bool down = event.type == CGEventType::KeyDown;
  return {.type = NSEventType::FlagsChanged,
          .modifierFlags = down ? flags | modifier : flags & ~modifier,
          .keyCode = event.virtualKey,
          .characters = {},
          .eventRef = nullptr};
}

}  // namespace

CGEventSourceRef EventQueue::CGEventSourceCreate(std::int32_t stateID) {
  return std::make_shared<CGEventSource>(CGEventSource{stateID});
}

CGEventRef EventQueue::CGEventCreate(CGEventSource* /*source*/) {
  auto event = std::make_shared<CGEvent>();
  event->location = mouseLocation();
  return event;
}

CGEventRef EventQueue::CGEventCreateKeyboardEvent(CGEventSource* source, std::uint16_t virtualKey,
                                                  bool keyDown) {
  CGEventRef event = CGEventCreate(source);
  event->type = keyDown ? CGEventType::KeyDown : CGEventType::KeyUp;
  event->virtualKey = virtualKey;
  return event;
}

CGEventRef EventQueue::CGEventCreateMouseEvent(CGEventSource* source, CGEventType type,
                                               NSPoint location, std::uint32_t button) {
  CGEventRef event = CGEventCreate(source);
  event->type = type;
  event->location = location;
  event->mouseButton = button;
  return event;
}

NSPoint EventQueue::CGEventGetLocation(const CGEvent* event) {
  return event != nullptr ? event->location : NSPoint{};
}

void EventQueue::CGEventSetFlags(CGEvent* event, std::uint64_t flags) {
  if (event != nullptr) event->flags = flags;
}

void EventQueue::CGEventKeyboardSetUnicodeString(CGEvent* event, std::u16string_view text) {
  if (event != nullptr) event->unicodeString = text;
}

void EventQueue::CGEventPostToPSN(const ProcessSerialNumber& psn, const CGEvent* event) {
  if (reaches(psn)) push(event);
}

void EventQueue::CGEventPost(std::uint32_t /*tap*/, const CGEvent* event) { push(event); }

void EventQueue::push(const CGEvent* event) {
  if (event == nullptr) return;
  if (event->type != CGEventType::KeyDown && event->type != CGEventType::KeyUp) return;
  if (const std::uint32_t modifier = modifierFlagOf(event->virtualKey); modifier != 0) {
    return events_.push_back(modifierChange(*event, modifier));
  }
  const auto flags = static_cast<std::uint32_t>(event->flags);
  const bool typesText = !event->unicodeString.empty();
  events_.push_back(
      {.type = event->type == CGEventType::KeyDown ? NSEventType::KeyDown : NSEventType::KeyUp,
       .modifierFlags = flags,
       .keyCode = event->virtualKey,
       .characters =
           typesText ? event->unicodeString : keyboard_.charactersForKey(event->virtualKey, flags),
       .eventRef = nullptr});
}

std::int32_t EventQueue::IOHIDPostEvent(std::uint32_t /*connection*/, std::uint32_t type,
                                        const NXKeyEventData& data, std::uint32_t version,
                                        std::uint32_t flags, std::uint32_t options) {
  const bool setsFlags = (options & kIOHIDSetGlobalEventFlags) != 0;
  if (version != kNXEventDataVersion || setsFlags != (type == NX_FLAGSCHANGED)) {
    return kIOReturnBadArgument;
  }
  NSEvent event;
  event.modifierFlags = flags;
  if (type == NX_FLAGSCHANGED) {
    event.type = NSEventType::FlagsChanged;
  } else if (type == NX_KEYDOWN || type == NX_KEYUP) {
    event.type = type == NX_KEYDOWN ? NSEventType::KeyDown : NSEventType::KeyUp;
    event.keyCode = data.keyCode;
    event.characters = keyboard_.charactersForKey(data.keyCode, flags);
  } else {
    return kIOReturnBadArgument;
  }
  events_.push_back(std::move(event));
  return 0;
}

std::optional<NSEvent> EventQueue::take() {
  if (events_.empty()) return std::nullopt;
  NSEvent event = std::move(events_.front());
  events_.pop_front();
  return event;
}

}  // namespace quorvane::field
