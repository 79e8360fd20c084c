#pragma once
// Keys as if the keyboard had them pressed.

#include <cstdint>

#include "hosts/x11/Display.h"

namespace quorvane::x11 {

[[nodiscard]] bool canPress(Display& display);
/// `keycode` as in linux/input-event-codes.h. Comes to whoever has the focus.
void press(Display& display, std::uint32_t keycode, bool down);

}  // namespace quorvane::x11
