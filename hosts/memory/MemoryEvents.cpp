#include "hosts/memory/MemoryEvents.h"

namespace quorvane::memory {
namespace {

constexpr std::int32_t kIOReturnNotOpen = -536870195;

std::string describeKey(std::string_view kind, const CGEvent& event) {
  std::string line(kind);
  Journal::append(line, event.virtualKey);
  if (event.flags != 0) {
    line += " flags ";
    Journal::append(line, Journal::Hex{event.flags});
  }
  return line;
}

std::string describe(const CGEvent* event) {
  if (event == nullptr) return "null";
  switch (event->type) {
    case CGEventType::KeyDown:
      return describeKey("keyDown ", *event);
    case CGEventType::KeyUp:
      return describeKey("keyUp ", *event);
    case CGEventType::MouseMoved:
      return "mouseMoved";
    case CGEventType::Null:
      break;
  }
  return "null event";
}

std::string_view describe(const CGEventSource* source) {
  return source == nullptr ? "no source" : "source";
}

}  // namespace

bool MemoryCarbonEvents::CreateEvent(FourCharCode eventClass, std::uint32_t kind, Seconds when,
                                     CarbonEvent& event) {
  const std::size_t line = journal_.call("CreateEvent ", Journal::Code{eventClass}, " ", kind);
  if (createEventFails) return journal_.result(line, false);
  event = CarbonEvent{};
  event.eventClass = eventClass;
  event.kind = kind;
  event.time = when;
  return true;
}

std::uint32_t MemoryCarbonEvents::GetCurrentKeyModifiers() {
  journal_.call("GetCurrentKeyModifiers");
  return keyModifiers ? *keyModifiers : latestModifiers();
}

bool MemoryCarbonEvents::Button() {
  journal_.count();
  return buttonDown;
}

bool MemoryCarbonEvents::CheckEventQueueForUserCancel() {
  journal_.call("CheckEventQueueForUserCancel");
  return userCancelled;
}

void MemoryCarbonEvents::GetKeys(KeyMap& keys) {
  journal_.call("GetKeys");
  keys = heldKeys();
}

template <class Made>
std::shared_ptr<Made> MemoryEventPosting::noted(std::shared_ptr<Made> made, std::string_view name) {
  if (creationFails) return nullptr;
  Made* const object = made.get();
  return {object,
          [this, name, kept = std::move(made)](Made*) { journal_.call("CFRelease ", name); }};
}

CGEventSourceRef MemoryEventPosting::CGEventSourceCreate(std::int32_t stateID) {
  journal_.call("CGEventSourceCreate ", stateID);
  return noted(queue_.CGEventSourceCreate(stateID), "source");
}

CGEventRef MemoryEventPosting::CGEventCreate(CGEventSource* source) {
  journal_.call("CGEventCreate ", describe(source));
  return noted(queue_.CGEventCreate(source), "event");
}

CGEventRef MemoryEventPosting::CGEventCreateKeyboardEvent(CGEventSource* source,
                                                          std::uint16_t virtualKey, bool keyDown) {
  journal_.call("CGEventCreateKeyboardEvent ", describe(source), " ", virtualKey,
                keyDown ? " down" : " up");
  return noted(queue_.CGEventCreateKeyboardEvent(source, virtualKey, keyDown), "event");
}

CGEventRef MemoryEventPosting::CGEventCreateMouseEvent(CGEventSource* source, CGEventType type,
                                                       NSPoint location, std::uint32_t button) {
  journal_.call("CGEventCreateMouseEvent ", describe(source), " ", static_cast<std::uint32_t>(type),
                " at ", location.x, " ", location.y, " button ", button);
  return noted(queue_.CGEventCreateMouseEvent(source, type, location, button), "event");
}

NSPoint MemoryEventPosting::CGEventGetLocation(const CGEvent* event) {
  journal_.call("CGEventGetLocation");
  return queue_.CGEventGetLocation(event);
}

void MemoryEventPosting::CGEventSetFlags(CGEvent* event, std::uint64_t flags) {
  journal_.call("CGEventSetFlags ", Journal::Hex{flags});
  queue_.CGEventSetFlags(event, flags);
}

void MemoryEventPosting::CGEventKeyboardSetUnicodeString(CGEvent* event, std::u16string_view text) {
  journal_.call("CGEventKeyboardSetUnicodeString ", text.size());
  queue_.CGEventKeyboardSetUnicodeString(event, text);
}

void MemoryEventPosting::CGEventPostToPSN(const ProcessSerialNumber& psn, const CGEvent* event) {
  journal_.call("CGEventPostToPSN ", psn, " ", describe(event));
  queue_.CGEventPostToPSN(psn, event);
}

void MemoryEventPosting::CGEventPost(std::uint32_t tap, const CGEvent* event) {
  journal_.call("CGEventPost ", tap, " ", describe(event));
  queue_.CGEventPost(tap, event);
}

void MemoryEventPosting::CGInhibitLocalEvents(bool inhibit) {
  journal_.call("CGInhibitLocalEvents ", inhibit ? 1 : 0);
}

void MemoryEventPosting::CGEnableEventStateCombining(bool combine) {
  journal_.call("CGEnableEventStateCombining ", combine ? 1 : 0);
}

std::uint32_t MemoryEventPosting::IOServiceOpen() {
  const std::size_t line = journal_.call("IOServiceOpen");
  return serviceOpenFails ? journal_.result(line, 0U) : queue_.IOServiceOpen();
}

std::int32_t MemoryEventPosting::IOHIDPostEvent(std::uint32_t connection, std::uint32_t type,
                                                const NXKeyEventData& data, std::uint32_t version,
                                                std::uint32_t flags, std::uint32_t options) {
  if (type == NX_FLAGSCHANGED) {
    journal_.call("IOHIDPostEvent flagsChanged ", Journal::Hex{flags});
  } else {
    const std::string_view kind = type == NX_KEYDOWN ? "keyDown" : "keyUp";
    const bool special = data.origCharSet == 0xFFFF && data.charSet == 0xFFFF;
    journal_.call("IOHIDPostEvent ", kind, " ", data.keyCode, special ? " special" : "");
  }
  if (connection == 0) return kIOReturnNotOpen;
  return queue_.IOHIDPostEvent(connection, type, data, version, flags, options);
}

}  // namespace quorvane::memory
