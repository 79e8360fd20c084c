#pragma once
// The window over the document, as the tool record tells of it: the popup or the document window,
// never both. The stand-in draws neither.

#include <cstdint>

#include "tools/checker/ToolRecord.h"

namespace quorvane::checker {

/// In screen points, or in the characters of a popup.
struct Extent {
  std::size_t height = 0;
  std::size_t width = 0;
};

class CorrectionWindow {
 public:
  explicit CorrectionWindow(ToolRecord tool) : tool_(tool) {}

  /// Both open at the published text position; `client` is the signature of the application whose
  /// text the window is for.
  void openPopup(const Extent& characters, std::uint32_t client);
  /// Opens the document window, once: whoever has closed it is left in peace. One that is hidden
  /// shows again at a text of its own client. Nothing happens for client 0, which is none.
  void accompany(std::uint32_t client);

  void close();
  /// The document window; a popup stays as it is.
  void showOrHide();

  /// Whether a point, vertical in the high half, lies in the window that is open.
  [[nodiscard]] bool holds(std::uint32_t packedPoint) const;

 private:
  enum class State { None, Popup, Document, Hidden, Dismissed };

  struct Rectangle {
    std::int16_t top = 0;
    std::int16_t left = 0;
    std::int16_t bottom = 0;
    std::int16_t right = 0;
  };

  [[nodiscard]] bool isOpen() const { return state_ == State::Popup || state_ == State::Document; }
  void place(const Extent& points);
  void show(State state);

  ToolRecord tool_;
  State state_ = State::None;
  std::uint32_t client_ = 0;
  Rectangle place_;
};

}  // namespace quorvane::checker
