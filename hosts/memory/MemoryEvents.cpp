#include "hosts/memory/MemoryEvents.h"

namespace quorvane::memory {
namespace {
constexpr std::int32_t kIOReturnNotOpen = -536870195;
}

bool MemoryCarbonEvents::CreateEvent(FourCharCode eventClass, std::uint32_t kind, double when,
                                     CarbonEvent& event) {
  const std::size_t line = journal_.call("CreateEvent ", Code{eventClass}, " ", kind);
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

bool MemoryCarbonEvents::CheckEventQueueForUserCancel() {
  journal_.call("CheckEventQueueForUserCancel");
  return userCancelled;
}

std::uint32_t MemoryEventPosting::IOServiceOpen() {
  const std::size_t line = journal_.call("IOServiceOpen");
  return serviceOpenFails ? journal_.result(line, 0U) : queue_.IOServiceOpen();
}

std::int32_t MemoryEventPosting::IOHIDPostEvent(std::uint32_t connection, std::uint32_t type,
                                                const NXKeyEventData& data, std::uint32_t version,
                                                std::uint32_t flags, std::uint32_t options) {
  if (type == NX_FLAGSCHANGED) {
    journal_.call("IOHIDPostEvent flagsChanged ", Hex{flags});
  } else {
    const std::string_view kind = type == NX_KEYDOWN ? "keyDown" : "keyUp";
    journal_.call("IOHIDPostEvent ", kind, " ", data.keyCode);
  }
  if (connection == 0) return kIOReturnNotOpen;
  return queue_.IOHIDPostEvent(connection, type, data, version, flags, options);
}

}  // namespace quorvane::memory
