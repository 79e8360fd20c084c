#pragma once
// A display as somebody before it uses it: windows that appear, the focus, keys and clicks.

#include <chrono>
#include <string>
#include <string_view>

struct _XDisplay;

namespace quorvane::tests {

class Screen {
 public:
  using Window = unsigned long;
  using Pause = std::chrono::milliseconds;

  /// `name` as in ":7".
  explicit Screen(const std::string& name);
  ~Screen();
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  [[nodiscard]] std::string name() const;
  /// Windows that have appeared up to now are no longer waited for.
  void forgetWindows();
  /// The next window that appears and is no menu or tip. Throws where none does within 30 seconds.
  Window awaitWindow();
  [[nodiscard]] bool hasFocus(Window window) const;
  void focus(Window window);
  [[nodiscard]] bool isOwned(const std::string& selection) const;
  [[nodiscard]] std::string title(Window window) const;

  /// Text as it is typed on a US keyboard, with a pause behind each key.
  void type(std::string_view text, Pause pause = Pause(20));
  /// A key with its modifiers held, as in "Control_L+Shift_L+Left".
  void press(std::string_view chord);
  /// Presses or releases one key alone.
  void key(const std::string& name, bool down);
  /// At a point of the window.
  void click(Window window, int x, int y, unsigned button = 1);

 private:
  void send(unsigned long keysym, bool down);
  void stroke(char character);

  _XDisplay* display_;
};

}  // namespace quorvane::tests
