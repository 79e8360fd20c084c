#pragma once
// The stand-in's own window, which takes the keys itself: a check of what has been copied, what is
// known of it, or a text. What a check has corrected is pasted over the selection.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/Clock.h"
#include "tools/checker/ClipboardLoan.h"
#include "tools/checker/InputMethodPort.h"
#include "tools/checker/ToolRecord.h"
#include "tools/checker/WordChoice.h"
#include "tools/checker/documents/Window.h"

namespace quorvane::checker {

class MainWindow {
 public:
  struct Parts {
    ToolRecord tool;
    WordChoice* choice;  ///< null: no dictionary
    Clock& clock;
    InputMethodPort& port;
    ClipboardLoan& clipboard;
    /// What is known of a word; empty: nothing is.
    std::function<std::u16string(std::u16string_view word)> definition;
    /// Before the window opens, and whenever it shows something else; null: after it has closed.
    /// False where that can't be seen by whoever draws it.
    std::function<bool(const WindowText*)> tell;
  };

  explicit MainWindow(Parts parts) : parts_(std::move(parts)) {}
  ~MainWindow() { close(); }
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;

  /// Opens the window that a command asks for; `client` is the signature of the application whose
  /// text it is about. False: the command is none of these.
  bool obey(std::uint32_t command, std::uint32_t client);
  /// False where there was nothing to do. It takes a fifth of a millisecond at most, and one word
  /// that has to be judged longer than that.
  bool poll();
  void press(char32_t key);
  void close();

 private:
  struct Command;

  void open(std::unique_ptr<Window> window, std::uint32_t client);
  std::unique_ptr<Window> windowFor(const Command& command);
  std::unique_ptr<Window> windowAbout(const Command& command, const std::string& utf8);
  /// Closes a window that nobody can see.
  bool show();
  void paste(const std::u16string& text);

  Parts parts_;
  std::unique_ptr<Window> window_;  ///< null: none is open
  std::uint32_t client_ = 0;        ///< the latest one's
  std::optional<WindowText> shown_;
};

}  // namespace quorvane::checker
