#pragma once
// Events of the X server by their kind.

#include <xcb/xcb.h>

#include <cstdint>
#include <cstring>

namespace quorvane::x11 {

/// Whoever has sent it.
inline std::uint8_t kindOf(const xcb_generic_event_t& event) { return event.response_type & 0x7F; }

template <class Event>
Event as(const xcb_generic_event_t& event) {
  static_assert(sizeof(Event) <= sizeof(xcb_generic_event_t));
  Event made;
  std::memcpy(&made, &event, sizeof made);
  return made;
}

}  // namespace quorvane::x11
