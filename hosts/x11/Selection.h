#pragma once
// The clipboard of an X desktop: its CLIPBOARD selection, as text. Nothing waits: what was asked
// for comes with the run loop.

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "hosts/x11/Conversion.h"
#include "hosts/x11/Display.h"

namespace quorvane::x11 {

class Selection {
 public:
  using Moment = std::chrono::steady_clock::time_point;
  struct Content {
    std::optional<std::string> text;  ///< UTF-8, if the owner keeps its word; none: there is none
    bool isAll = false;               ///< the text, or the lack of it, is all that is there
  };

  /// Null where the server can't tell of changes. The others outlive this.
  static std::unique_ptr<Selection> open(Display& display, desktop::RunLoop& runLoop);
  ~Selection();
  Selection(const Selection&) = delete;
  Selection& operator=(const Selection&) = delete;

  /// One at a time: what was asked for before doesn't come any more.
  void look(std::function<void(Content)> then);
  /// What the user pastes is `text` from now on, until somebody copies or this goes.
  void own(std::string text);
  /// Nothing is on the clipboard.
  void clear();
  [[nodiscard]] bool isOwn() const { return owner_ == window_; }
  /// When somebody has taken our text last; none: nobody has.
  [[nodiscard]] std::optional<Moment> taken() const { return taken_; }

  /// Somebody else has copied.
  std::function<void()> copied;

 private:
  Selection(Display& display, desktop::RunLoop& runLoop, std::uint8_t firstEvent);
  void handle(const xcb_generic_event_t& event);
  void onOwner(xcb_window_t owner, xcb_timestamp_t time);
  void setOwner(xcb_window_t owner);
  void lookForText(bool isAll);
  [[nodiscard]] bool areText(const std::string& targets) const;
  void answer(const xcb_selection_request_event_t& request);
  bool give(xcb_window_t window, xcb_atom_t property, xcb_atom_t target);
  bool giveText(xcb_window_t window, xcb_atom_t property, xcb_atom_t target);
  xcb_atom_t atom(const char* name) { return display_.atom(name); }

  Display& display_;
  desktop::RunLoop& runLoop_;
  std::uint8_t firstEvent_;  ///< of the extension that tells of changes
  xcb_window_t window_;
  xcb_window_t owner_ = XCB_NONE;
  xcb_timestamp_t time_ = XCB_CURRENT_TIME;  ///< of the latest copy that is known
  unsigned settings_ = 0;                    ///< of ours, of which the server hasn't told yet
  std::string text_;                         ///< ours
  std::optional<Moment> taken_;
  std::unique_ptr<Conversion> conversion_;
  std::function<void(Content)> then_;
};

}  // namespace quorvane::x11
