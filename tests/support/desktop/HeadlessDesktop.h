#pragma once
// A desktop of its own for one test: display, session bus, input method framework with one engine,
// and a panel that tells as lines what it is asked to show (clients/panel.cpp). No file and no
// address is shared with the session of whoever runs the test.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/RunningProgram.h"
#include "tests/support/desktop/Program.h"
#include "tests/support/desktop/Screen.h"

namespace quorvane::tests {

struct DesktopOptions {
  std::string engine;  ///< command line; the framework starts it
  /// GTK waits for the engine's answer to each key. Qt doesn't: its edits would come behind the
  /// keys that follow (IBUS_ENABLE_SYNC_MODE=1 among the variables has it wait, too).
  bool sync = true;
  bool xim = false;                      ///< also for clients of the X input method
  std::vector<std::string> variables{};  ///< NAME=VALUE, before our own
};

class HeadlessDesktop {
 public:
  /// Why none can be had on this machine; empty: it can.
  static std::string missing();

  explicit HeadlessDesktop(DesktopOptions options);
  HeadlessDesktop(const HeadlessDesktop&) = delete;
  HeadlessDesktop& operator=(const HeadlessDesktop&) = delete;

  [[nodiscard]] Screen& screen() { return *screen_; }
  [[nodiscard]] Lines& panel() { return *panel_; }
  [[nodiscard]] std::filesystem::path file(std::string_view name) const {
    return folder_.path() / name;
  }
  [[nodiscard]] std::string log() const { return contentOf(file("log")); }

  /// A program on this desktop.
  [[nodiscard]] Launch launch(std::vector<std::string> command, bool speaks = false) const;
  /// Gives a window the focus and waits until the engine has been told.
  void focus(Screen::Window window);
  /// Does something that moves the focus to a field, and waits until the engine has been told.
  template <class Action>
  void focusBy(Action action) {
    panel_->skip();
    action();
    awaitFocus();
  }

  /// Makes the engine the one in use, starting it where it doesn't run.
  void selectEngine();
  /// Process of the engine; 0: none.
  [[nodiscard]] pid_t engine() const;
  void startDaemon();
  /// A picture of the whole display as a PNG.
  void screenshot(const std::filesystem::path& picture) const;

 private:
  void startDisplay();
  void startBus();
  void writeComponent() const;
  void awaitFocus();

  DesktopOptions options_;
  OwnFolder folder_;
  std::vector<std::string> variables_;
  std::unique_ptr<Program> display_;
  std::unique_ptr<Program> bus_;
  std::unique_ptr<Program> daemon_;
  std::unique_ptr<Screen> screen_;
  std::unique_ptr<Lines> panel_;
};

}  // namespace quorvane::tests
