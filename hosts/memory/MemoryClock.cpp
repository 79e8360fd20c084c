#include "hosts/memory/MemoryClock.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "src/base/Instance.h"

namespace quorvane::memory {
namespace {

Seconds toSeconds(std::uint64_t nanoseconds) { return std::chrono::nanoseconds(nanoseconds); }

}  // namespace

std::uint64_t MemoryClock::mach_absolute_time() {
  journal_.repeated("mach_absolute_time");
  advance(step);
  return now_;
}

Seconds MemoryClock::GetCurrentEventTime() {
  journal_.call("GetCurrentEventTime");
  return toSeconds(now_);
}

Seconds MemoryClock::CFAbsoluteTimeGetCurrent() {
  journal_.call("CFAbsoluteTimeGetCurrent");
  return date();
}

Seconds MemoryClock::date() const { return dateAtStart_ + toSeconds(now_); }

void MemoryClock::setDate(Seconds date) { dateAtStart_ = date - toSeconds(now_); }

void MemoryClock::usleep(Microseconds duration) {
  journal_.call("usleep ", duration.count());
  advance(std::uint64_t{duration.count()} * 1000);
}

void MemoryClock::advance(std::uint64_t nanoseconds) {
  const std::uint64_t until = now_ + nanoseconds;
  if (moving_) {
    now_ = until;
    return;
  }
  const FlagGuard moving(moving_);
  while (runNextDue(std::max(until, now_))) {
  }
  now_ = std::max(until, now_);
  for (const std::function<void()>& hook : hooks_) hook();
}

void MemoryClock::advanceTicks(double ticks) {
  advance(static_cast<std::uint64_t>(ticks * static_cast<double>(kNanosecondsPerTick)));
}

void MemoryClock::advanceSeconds(double seconds) {
  advance(static_cast<std::uint64_t>(seconds * 1e9));
}

void MemoryClock::schedule(std::uint64_t nanoseconds, std::function<void()> function) {
  due_.push_back({now_ + nanoseconds, scheduled_++, std::move(function)});
}

void MemoryClock::onMove(std::function<void()> function) { hooks_.push_back(std::move(function)); }

bool MemoryClock::isBefore(const Due& a, const Due& b) {
  return std::tie(a.at, a.order) < std::tie(b.at, b.order);
}

std::optional<std::uint64_t> MemoryClock::untilNext() const {
  const auto next = std::ranges::min_element(due_, isBefore);
  if (next == due_.end()) return std::nullopt;
  return next->at > now_ ? next->at - now_ : 0;
}

bool MemoryClock::runNextDue(std::uint64_t until) {
  const auto next = std::ranges::min_element(due_, isBefore);
  if (next == due_.end() || next->at > until) return false;
  const Due due = std::move(*next);
  due_.erase(next);
  now_ = std::max(now_, due.at);
  due.function();
  return true;
}

Seconds MemoryClock::Quiet::GetCurrentEventTime() { return toSeconds(clock_.now()); }

void MemoryClock::Quiet::usleep(Microseconds duration) {
  clock_.advance(std::uint64_t{duration.count()} * 1000);
}

}  // namespace quorvane::memory
