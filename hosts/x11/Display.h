#pragma once
// The connection to an X server, whose events come from the run loop. One that breaks stays silent.

#include <xcb/xcb.h>

#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "hosts/desktop/RunLoop.h"

namespace quorvane::x11 {

/// What xcb gives is freed.
struct Freed {
  void operator()(void* given) const { std::free(given); }
};
template <class Given>
using Owned = std::unique_ptr<Given, Freed>;

class Display {
 public:
  /// `name` as in ":7"; null: the one of the environment. Null where none can be reached.
  static std::unique_ptr<Display> open(desktop::RunLoop& runLoop, const char* name = nullptr);
  ~Display();
  Display(const Display&) = delete;
  Display& operator=(const Display&) = delete;

  [[nodiscard]] xcb_connection_t* connection() const { return connection_; }
  [[nodiscard]] xcb_window_t root() const { return root_; }
  /// One that nobody sees, with notice of its properties.
  [[nodiscard]] xcb_window_t makeWindow() const;
  xcb_atom_t atom(const std::string& name);
  void flush() const { xcb_flush(connection_); }

  std::function<void(const xcb_generic_event_t&)> onEvent;

 private:
  Display(desktop::RunLoop& runLoop, xcb_connection_t* connection);
  void handleEvents();

  xcb_connection_t* connection_;
  xcb_window_t root_;
  std::map<std::string, xcb_atom_t> atoms_;
  std::unique_ptr<Registration> watch_;
};

}  // namespace quorvane::x11
