#pragma once
// Events that the input method posted and that wait for their delivery.

#include <cstddef>
#include <deque>
#include <optional>

#include "platform/AppKitEvents.h"
#include "platform/EventPosting.h"

namespace quorvane::field {

/// The HID system of a text-field application: what is posted comes back as events. Flags changed
/// has the flags, key code 0 and no characters; a key has its code and what the keyboard makes of
/// it. Any other type or version is refused with a nonzero result, and so are flags that don't come
/// as the global ones.
class EventQueue : public EventPosting {
 public:
  std::uint32_t IOServiceOpen() override { return 1; }
  std::int32_t IOHIDPostEvent(std::uint32_t connection, std::uint32_t type,
                              const NXKeyEventData& data, std::uint32_t version,
                              std::uint32_t flags, std::uint32_t options) override;

  /// The oldest event; empty where none waits.
  std::optional<NSEvent> take();
  [[nodiscard]] std::size_t size() const { return events_.size(); }
  void clear() { events_.clear(); }

 private:
  std::deque<NSEvent> events_;
};

}  // namespace quorvane::field
