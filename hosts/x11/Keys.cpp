#include "hosts/x11/Keys.h"

#include <xcb/xtest.h>

namespace quorvane::x11 {

bool canPress(Display& display) {
  const auto* const extension = xcb_get_extension_data(display.connection(), &xcb_test_id);
  return extension != nullptr && extension->present != 0 &&
         xcb_connection_has_error(display.connection()) == 0;
}

void press(Display& display, std::uint32_t keycode, bool down) {
  constexpr std::uint32_t kFirstKey = 8;
  xcb_test_fake_input(display.connection(), down ? XCB_KEY_PRESS : XCB_KEY_RELEASE,
                      static_cast<std::uint8_t>(keycode + kFirstKey), XCB_CURRENT_TIME, XCB_NONE, 0,
                      0, 0);
  display.flush();
}

}  // namespace quorvane::x11
