#pragma once
// A question as a notification of the desktop (org.freedesktop.Notifications), its buttons as
// actions. Everything about it happens while the default main context is iterated.

#include <memory>
#include <optional>

#include "platform/Alerts.h"

namespace quorvane::desktop {

class Notification {
 public:
  /// Null where this session has no bus.
  static std::unique_ptr<Notification> show(const NSAlert& alert);
  /// Takes it off the screen, without waiting for that.
  ~Notification() { close(); }
  Notification(const Notification&) = delete;
  Notification& operator=(const Notification&) = delete;

  /// Begins to take it off the screen. Doing it twice does no harm.
  void close();
  /// Once it has begun: whether it has been taken off, as far as anybody knows.
  [[nodiscard]] bool isGone() const;
  /// False once it has been answered or dismissed, or can't be shown.
  [[nodiscard]] bool isOpen() const;
  /// The button's place, from 0.
  [[nodiscard]] std::optional<int> answer() const;

 private:
  struct State;
  explicit Notification(std::shared_ptr<State> state) : state_(std::move(state)) {}

  std::shared_ptr<State> state_;
};

}  // namespace quorvane::desktop
