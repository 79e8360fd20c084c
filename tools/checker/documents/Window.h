#pragma once
// A window of the stand-in that takes the keys itself: what it shows, and what a key does to it.

#include <string>

#include "tools/checker/documents/WindowText.h"

namespace quorvane::checker {

/// A key: its character, or the classic code of one without (13 is Return, 27 Escape).
enum class WindowKey : char32_t {
  PageUp = 11,
  PageDown = 12,
  Return = 13,
  Enter = 3,
  Escape = 27,
  Up = 30,
  Down = 31,
};

enum class WindowOutcome {
  StaysOpen,
  Closes,
  Pastes,  ///< closes; its text is to take the place of the selection
};

class Window {
 public:
  virtual ~Window() = default;

  [[nodiscard]] virtual WindowText shown() const = 0;
  virtual WindowOutcome press(char32_t key) = 0;
  /// Goes on with what it has to do, a little. False where there is nothing to do.
  virtual bool work() { return false; }
  [[nodiscard]] virtual std::u16string textToPaste() const { return {}; }
  /// Whether it keeps another check from being started.
  [[nodiscard]] virtual bool checks() const { return false; }
};

}  // namespace quorvane::checker
