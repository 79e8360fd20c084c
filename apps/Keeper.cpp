#include "apps/Keeper.h"

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <optional>
#include <thread>

#include "apps/Command.h"
#include "apps/EndSignals.h"
#include "hosts/desktop/Accident.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;
using SteadyClock = std::chrono::steady_clock;

constexpr auto kPause = 100ms;
/// One that ends so soon, so often, won't do any better the next time.
constexpr auto kSoon = 5s;
constexpr unsigned kMostSoon = 5;

/// Holds the end signals and those of children, which are waited for.
class HeldSignals {
 public:
  HeldSignals() {
    sigaddset(&awaited_, SIGCHLD);
    sigprocmask(SIG_BLOCK, &awaited_, &before_);
  }
  ~HeldSignals() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
  HeldSignals(const HeldSignals&) = delete;
  HeldSignals& operator=(const HeldSignals&) = delete;

  /// How `child` ended; what asks us to end asks it.
  [[nodiscard]] int awaitEnd(pid_t child) const {
    for (int status = 0;;) {
      if (::waitpid(child, &status, WNOHANG) == child) return status;
      int number = 0;
      if (sigwait(&awaited_, &number) == 0 && number != SIGCHLD) ::kill(child, number);
    }
  }

 private:
  sigset_t awaited_ = endSignals();
  sigset_t before_{};
};

/// How a child process ended; none: this is the child, or there is none.
std::optional<int> runChild() {
  const HeldSignals held;
  const pid_t child = ::fork();
  return child > 0 ? std::optional(held.awaitEnd(child)) : std::nullopt;
}

}  // namespace

int keepRunning(const std::function<int(bool again)>& serve) {
  unsigned soon = 0;
  for (bool again = false;; again = true) {
    const auto start = SteadyClock::now();
    const auto status = runChild();
    if (!status) return serve(again);
    if (!desktop::wasAccident(*status))
      return WIFEXITED(*status) ? WEXITSTATUS(*status) : kExitDone;
    soon = SteadyClock::now() - start < kSoon ? soon + 1 : 0;
    if (soon == kMostSoon) return kExitFailed;
    std::this_thread::sleep_for(kPause);
  }
}

}  // namespace quorvane
