#include "apps/StatusKeeper.h"

#include <unistd.h>

#include <algorithm>

#include "src/menu/CurrentAppFlags.h"
#include "src/session/FixGuard.h"

namespace quorvane {

using desktop::InputMethodStatus;

static_assert(std::tuple_size_v<decltype(InputMethodStatus::dropped)> == kFixFaults);

StatusKeeper::StatusKeeper(Instance& instance, const std::filesystem::path& runtimeFolder,
                           std::uint32_t keyOffset)
    : instance_(instance), file_(runtimeFolder, ::getpid()) {
  status_.keyOffset = keyOffset;
  file_.write(status_);
}

void StatusKeeper::begins(const NSEvent& event) {
  if (event.type == NSEventType::KeyDown) key_ = SteadyClock::now();
}

void StatusKeeper::ends(const NSEvent& event, field::Outcome outcome) {
  if (event.type != NSEventType::KeyDown) return;
  ++status_.keys;
  const bool isPassed =
      outcome == field::Outcome::PassedOn || outcome == field::Outcome::PassedAfterError;
  ++(isPassed ? status_.passed : status_.consumed);
  const auto* const group =
      std::ranges::upper_bound(InputMethodStatus::kTimeBounds, microsecondsSinceKey());
  ++status_.times[static_cast<std::size_t>(group - InputMethodStatus::kTimeBounds.begin())];
  update();
}

void StatusKeeper::update() {
  takeFixes();
  takeFront();
  if (tellOfFields) tellOfFields(status_);
  file_.write(status_);
}

std::uint64_t StatusKeeper::microsecondsSinceKey() const {
  const auto since = SteadyClock::now() - key_;
  return static_cast<std::uint64_t>(
      std::chrono::duration_cast<std::chrono::microseconds>(since).count());
}

void StatusKeeper::takeFixes() {
  const auto& fixes = instance_.state<FixState>();
  status_.dropped = fixes.dropped;
  if (fixes.kept == status_.fixes) return;
  status_.fixes = fixes.kept;
  status_.lastFixLength = fixes.lastKept.count;
  status_.lastFixMicroseconds = microsecondsSinceKey();
}

void StatusKeeper::takeFront() {
  const auto* const front = instance_.platform().workspace.frontmostApplication();
  status_.switches = instance_.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
  status_.frontProcess =
      front == nullptr ? 0 : static_cast<std::uint64_t>(front->processIdentifier);
  status_.frontApplication.fill('\0');
  if (front == nullptr) return;
  front->bundleIdentifier.copy(status_.frontApplication.data(),
                               status_.frontApplication.size() - 1);
}

}  // namespace quorvane
