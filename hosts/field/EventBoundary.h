#pragma once
// Where an event crosses from a host into the input method. The controller gets it with a client;
// what it throws ends here; and whether the client may still see the event is judged by what of it
// reached the client.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/field/Client.h"
#include "platform/LogSink.h"

namespace quorvane::field {

/// What became of an event. The last two: the controller threw, and the client had not, or had
/// already, been given the event's own text.
enum class Outcome { Consumed, PassedOn, PassedAfterError, ConsumedAfterError };

std::string_view describe(Outcome outcome);

class EventBoundary {
 public:
  explicit EventBoundary(LogSink& log) : log_(log) {}
  EventBoundary(const EventBoundary&) = delete;
  EventBoundary& operator=(const EventBoundary&) = delete;

  /// Null: nobody handles events, all of them are passed on. Not owned.
  void setController(IMKInputController* controller) { controller_ = controller; }
  [[nodiscard]] IMKInputController* controller() const { return controller_; }

  /// One event. Events may be nested; what a nested one changed is its own affair.
  Outcome offer(const NSEvent& event, Client& client);
  /// What the client has been given so far isn't the text of the event under way.
  void ownTextFollows();
  /// Any other call of the controller, where there is one. False where it threw; that is recorded.
  template <class Call>
  bool call(const Call& call) {
    try {
      if (controller_) call(*controller_);
      return true;
    } catch (...) {
      recordThrown();
      return false;
    }
  }

  /// Keeps and logs what went wrong.
  void recordError(std::string message);
  /// Exceptions of the controller and what the host has recorded; the latest hundred.
  [[nodiscard]] const std::vector<std::string>& errors() const { return errors_; }

  /// Offered what the controller declined; true: taken. What it throws counts as thrown by the
  /// controller.
  std::function<bool(const NSEvent&)> takeDeclined;

 private:
  struct Progress;

  Outcome offer(const NSEvent& event, Client& client, const Progress& progress);
  /// What is being caught.
  void recordThrown();

  LogSink& log_;
  IMKInputController* controller_ = nullptr;
  Progress* progress_ = nullptr;  ///< the innermost event under way
  std::vector<std::string> errors_;
};

}  // namespace quorvane::field
