#pragma once
// One format of a selection, asked of its owner, who may be slow, or gone, or send it in parts.

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "hosts/x11/Display.h"

namespace quorvane::x11 {

class Conversion {
 public:
  static constexpr std::chrono::milliseconds kPatience{400};

  /// The bytes and their type; none where the owner hasn't the format, doesn't give it in time, or
  /// gives more than a clipboard holds. Comes once, as the last that this does: it may end this.
  using Then = std::function<void(std::optional<std::string> bytes, xcb_atom_t type)>;

  Conversion(Display& display, desktop::RunLoop& runLoop, xcb_atom_t selection, xcb_atom_t target,
             Then then);
  ~Conversion();
  Conversion(const Conversion&) = delete;
  Conversion& operator=(const Conversion&) = delete;

  void handle(const xcb_generic_event_t& event);

 private:
  void onAnswer(const xcb_selection_notify_event_t& answer);
  void onPart(const xcb_property_notify_event_t& event);
  [[nodiscard]] Owned<xcb_get_property_reply_t> take() const;
  bool append(const xcb_get_property_reply_t& part);
  void end(bool done);

  Display& display_;
  Then then_;
  xcb_window_t window_;  ///< of its own: what comes too late for it comes to nobody
  xcb_atom_t property_;
  bool inParts_ = false;
  std::string bytes_;
  xcb_atom_t type_ = XCB_ATOM_NONE;
  std::unique_ptr<Registration> timer_;
};

}  // namespace quorvane::x11
