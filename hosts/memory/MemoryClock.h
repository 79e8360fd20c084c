#pragma once
// A clock that moves when told, and by a fixed step at each reading of mach_absolute_time, so that
// a wait that spins on it ends.

#include <cstdint>
#include <functional>
#include <list>
#include <optional>
#include <vector>

#include "hosts/journal/Journal.h"
#include "platform/Clock.h"

namespace quorvane::memory {

/// One sixtieth of a second.
inline constexpr std::uint64_t kNanosecondsPerTick = 16'666'667;

class MemoryClock : public Clock {
 public:
  explicit MemoryClock(Journal& journal) : journal_(journal), quiet_(*this) {}
  MemoryClock(const MemoryClock&) = delete;
  MemoryClock& operator=(const MemoryClock&) = delete;

  std::uint64_t mach_absolute_time() override;
  Seconds GetCurrentEventTime() override;
  Seconds CFAbsoluteTimeGetCurrent() override;
  void usleep(Microseconds duration) override;

  [[nodiscard]] std::uint64_t now() const { return now_; }
  /// Moves time, stopping at each scheduled moment on the way. Called from a scheduled function or
  /// a hook it only moves the time; what falls due by that runs afterwards.
  void advance(std::uint64_t nanoseconds);
  /// The date moves with the time.
  [[nodiscard]] Seconds date() const;
  void setDate(Seconds date);
  void advanceTicks(double ticks);
  void advanceSeconds(double seconds);
  /// Runs `function` once, `nanoseconds` from now. In due order; equal moments in the order of
  /// their scheduling.
  void schedule(std::uint64_t nanoseconds, std::function<void()> function);
  /// Nanoseconds until the next scheduled moment; empty where there is none.
  [[nodiscard]] std::optional<std::uint64_t> untilNext() const;
  /// Runs whenever the time has moved, in the order of their adding. Stays for good.
  void onMove(std::function<void()> function);

  /// The same time for the host's own use: not recorded, not counted, and it moves nothing.
  [[nodiscard]] Clock& quiet() { return quiet_; }

  std::uint64_t step = 1'000'000;  ///< nanoseconds that one reading takes

 private:
  struct Due {
    std::uint64_t at;
    std::uint64_t order;
    std::function<void()> function;
  };
  class Quiet : public Clock {
   public:
    explicit Quiet(MemoryClock& clock) : clock_(clock) {}
    std::uint64_t mach_absolute_time() override { return clock_.now(); }
    Seconds GetCurrentEventTime() override;
    Seconds CFAbsoluteTimeGetCurrent() override { return clock_.date(); }
    void usleep(Microseconds duration) override;

   private:
    MemoryClock& clock_;
  };
  static bool isBefore(const Due& a, const Due& b);
  bool runNextDue(std::uint64_t until);

  Journal& journal_;
  Quiet quiet_;
  std::uint64_t now_ = 1'000'000'000;
  Seconds dateAtStart_{};  ///< when `now_` was 0
  std::uint64_t scheduled_ = 0;
  std::vector<Due> due_;
  std::list<std::function<void()>> hooks_;  ///< a hook may add another
  bool moving_ = false;
};

}  // namespace quorvane::memory
