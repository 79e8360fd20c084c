#include "hosts/field/EventBoundary.h"

#include <exception>
#include <utility>

namespace quorvane::field {
namespace {

constexpr std::size_t kErrorsKept = 100;

}  // namespace

/// What reached the client since the event began, apart from what nested events brought.
struct EventBoundary::Progress {
  Progress(EventBoundary& owner, const Client& target)
      : boundary(owner),
        client(target),
        outer(owner.progress_),
        changesBefore(target.changes()),
        outerChangesBefore(outer ? outer->client.changes() : 0) {
    owner.progress_ = this;
  }
  ~Progress() {
    boundary.progress_ = outer;
    if (outer) outer->nestedChanges += outer->client.changes() - outerChangesBefore;
  }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  [[nodiscard]] bool changed() const { return client.changes() - changesBefore > nestedChanges; }
  void ownTextFollows() {
    changesBefore = client.changes();
    nestedChanges = 0;
  }

  EventBoundary& boundary;
  const Client& client;
  Progress* outer;
  std::uint64_t changesBefore;
  std::uint64_t outerChangesBefore;
  std::uint64_t nestedChanges = 0;
};

std::string_view describe(Outcome outcome) {
  switch (outcome) {
    case Outcome::Consumed:
      return "consumed";
    case Outcome::PassedOn:
      return "passed on";
    case Outcome::PassedAfterError:
      return "passed on after an error";
    case Outcome::ConsumedAfterError:
      break;
  }
  return "consumed after an error";
}

Outcome EventBoundary::offer(const NSEvent& event, Client& client) {
  Progress progress(*this, client);
  return offer(event, client, progress);
}

Outcome EventBoundary::offer(const NSEvent& event, Client& client, const Progress& progress) {
  bool consumed = false;
  const bool whole = call([&](IMKInputController& controller) {
    consumed = controller.handleEvent(event, &client) || (takeDeclined && takeDeclined(event));
  });
  if (whole) return consumed ? Outcome::Consumed : Outcome::PassedOn;
  return progress.changed() ? Outcome::ConsumedAfterError : Outcome::PassedAfterError;
}

void EventBoundary::ownTextFollows() {
  if (progress_) progress_->ownTextFollows();
}

void EventBoundary::recordThrown() {
  try {
    throw;
  } catch (const std::exception& error) {
    recordError(std::string("the input method threw: ") + error.what());
  } catch (...) {
    recordError("the input method threw something unknown");
  }
}

void EventBoundary::recordError(std::string message) {
  if (log_.enabled) log_.writeLine("* * * " + message);
  if (errors_.size() == kErrorsKept) errors_.erase(errors_.begin());
  errors_.push_back(std::move(message));
}

}  // namespace quorvane::field
