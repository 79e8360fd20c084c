#include "hosts/field/EventQueue.h"

#include <utility>

#include "hosts/field/KeyTable.h"

namespace quorvane::field {
namespace {
constexpr std::int32_t kIOReturnBadArgument = -536870206;
constexpr std::uint32_t kNXEventDataVersion = 2;
}  // namespace

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
    event.characters = charactersForKey(data.keyCode, flags);
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
