#pragma once
// The signals that ask a program to end.

#include <array>
#include <csignal>

namespace quorvane {

inline constexpr std::array<int, 3> kEndSignals{SIGINT, SIGTERM, SIGHUP};

inline sigset_t endSignals() {
  sigset_t set;
  sigemptyset(&set);
  for (const int number : kEndSignals) sigaddset(&set, number);
  return set;
}

/// Lets them wait for as long as it lives: there is something to clear away already, and nobody yet
/// who would do it.
class HeldEndSignals {
 public:
  HeldEndSignals() {
    const sigset_t set = endSignals();
    sigprocmask(SIG_BLOCK, &set, &before_);
  }
  ~HeldEndSignals() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
  HeldEndSignals(const HeldEndSignals&) = delete;
  HeldEndSignals& operator=(const HeldEndSignals&) = delete;

 private:
  sigset_t before_;
};

}  // namespace quorvane
