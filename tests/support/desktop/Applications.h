#pragma once
// Programs on the test desktop with a text field that has the focus: ours, and stock applications.

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/desktop/HeadlessDesktop.h"

namespace quorvane::tests {

class Application {
 public:
  virtual ~Application() = default;
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  /// What stands in the field, as the application says itself.
  virtual std::string text(int field = 0) = 0;
  /// Waits until that is `expected`.
  testing::AssertionResult shows(const std::string& expected, int field = 0,
                                 std::chrono::seconds longest = std::chrono::seconds(30));

  [[nodiscard]] Program& program() { return program_; }
  [[nodiscard]] Screen::Window window() const { return window_; }
  /// Gives it the focus and waits until the engine has been told.
  virtual void focus() { desktop_.focus(window_); }
  void stop() const { program_.signal(SIGSTOP); }
  void goOn() const { program_.signal(SIGCONT); }

 protected:
  /// Starts it and waits for its window.
  Application(HeadlessDesktop& desktop, const Launch& launch);
  [[nodiscard]] HeadlessDesktop& desktop() const { return desktop_; }

 private:
  HeadlessDesktop& desktop_;
  Program program_;
  Screen::Window window_;
};

/// Ours, with these fields: see clients/gtk_client.cpp, which its lines speak with.
class GtkClient : public Application {
 public:
  GtkClient(HeadlessDesktop& desktop, int version, std::vector<std::string> fields);
  std::string text(int field = 0) override;
  void send(const std::string& command) { program().lines().send(command); }
};

/// An editor of plain text with a new file, which it writes at Control-S.
class Editor : public Application {
 public:
  /// `name` is the program's: mousepad, featherpad.
  Editor(HeadlessDesktop& desktop, const std::string& name);
  /// Has it saved, where there is something to save.
  std::string text(int field = 0) override;

 private:
  [[nodiscard]] std::filesystem::path document() const { return desktop().file("document"); }
};

/// A terminal whose program keeps each byte that it reads.
class Terminal : public Application {
 public:
  explicit Terminal(HeadlessDesktop& desktop);
  std::string text(int field = 0) override;
};

/// Firefox with a page of a text area (field 0) and an input for a password (field 1). The page
/// tells in its title what they hold.
class Browser : public Application {
 public:
  explicit Browser(HeadlessDesktop& desktop);
  std::string text(int field = 0) override;
  void focus() override;
  /// Waits until the page has the focus in this field.
  [[nodiscard]] bool isIn(int field);
};

}  // namespace quorvane::tests
