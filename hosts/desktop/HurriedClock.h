#pragma once
// A clock for keys that mustn't wait long. Waits of the logic end by the clock: one that has gone
// on too long finds it leaping ahead.

#include <chrono>
#include <functional>

#include "platform/Clock.h"

namespace quorvane::desktop {

/// How long somebody else may keep a key of a client waiting.
inline constexpr std::chrono::milliseconds kLongestOfClients{4};

class HurriedClock final : public quorvane::Clock {
 public:
  /// `inner` and what `isWithinKey` looks at outlive this.
  HurriedClock(quorvane::Clock& inner, std::function<bool()> isWithinKey)
      : inner_(inner), isWithinKey_(std::move(isWithinKey)) {}

  void keyBegins() { latest_ = inner_.mach_absolute_time() + nanoseconds(kLongestOfClients); }

  std::uint64_t mach_absolute_time() override {
    const std::uint64_t now = inner_.mach_absolute_time();
    if (isLate(now)) ahead_ += nanoseconds(kLeap);
    return now + ahead_;
  }
  Seconds GetCurrentEventTime() override { return inner_.GetCurrentEventTime(); }
  Seconds CFAbsoluteTimeGetCurrent() override { return inner_.CFAbsoluteTimeGetCurrent(); }
  void usleep(Microseconds duration) override {
    if (!isLate(inner_.mach_absolute_time())) inner_.usleep(duration);
  }

 private:
  static constexpr std::chrono::milliseconds kLeap{100};

  static constexpr std::uint64_t nanoseconds(std::chrono::nanoseconds duration) {
    return static_cast<std::uint64_t>(duration.count());
  }
  [[nodiscard]] bool isLate(std::uint64_t now) const { return now > latest_ && isWithinKey_(); }

  quorvane::Clock& inner_;
  std::function<bool()> isWithinKey_;
  std::uint64_t latest_ = 0;  ///< when the waits of the key under way end
  std::uint64_t ahead_ = 0;
};

}  // namespace quorvane::desktop
