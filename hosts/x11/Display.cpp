#include "hosts/x11/Display.h"

namespace quorvane::x11 {

std::unique_ptr<Display> Display::open(desktop::RunLoop& runLoop, const char* name) {
  xcb_connection_t* const connection = xcb_connect(name, nullptr);
  if (xcb_connection_has_error(connection) == 0) {
    return std::unique_ptr<Display>(new Display(runLoop, connection));
  }
  xcb_disconnect(connection);
  return nullptr;
}

Display::Display(desktop::RunLoop& runLoop, xcb_connection_t* connection)
    : connection_(connection),
      root_(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root),
      watch_(runLoop.watch(xcb_get_file_descriptor(connection), G_IO_IN,
                           [this](GIOCondition) { handleEvents(); })) {}

Display::~Display() {
  watch_.reset();
  xcb_disconnect(connection_);
}

xcb_window_t Display::makeWindow() const {
  const xcb_window_t window = xcb_generate_id(connection_);
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, root_, -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  return window;
}

xcb_atom_t Display::atom(const std::string& name) {
  const auto [known, isNew] = atoms_.try_emplace(name, XCB_ATOM_NONE);
  if (!isNew) return known->second;
  const auto length = static_cast<std::uint16_t>(name.size());
  const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
      connection_, xcb_intern_atom(connection_, 0, length, name.c_str()), nullptr));
  if (reply) known->second = reply->atom;
  return known->second;
}

void Display::handleEvents() {
  while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
    if (onEvent) onEvent(*event);
  }
  flush();
  if (xcb_connection_has_error(connection_) != 0) watch_.reset();
}

}  // namespace quorvane::x11
