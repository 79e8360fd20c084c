#include "apps/StandIn.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <system_error>

#include "apps/EndSignals.h"

namespace quorvane {
namespace {

/// Between fork and exec: only calls that are safe there.
[[noreturn]] void becomeStandIn(pid_t parent, StandIn::Talk talk) {
  ::prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (::getppid() != parent) ::_exit(1);
  const sigset_t heldByParent = endSignals();
  ::sigprocmask(SIG_UNBLOCK, &heldByParent, nullptr);
  const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC);
  ::dup2(nothing, STDIN_FILENO);
  if (talk == StandIn::Talk::None) ::dup2(nothing, STDERR_FILENO);
  ::dup2(STDERR_FILENO, STDOUT_FILENO);
  std::array<char, 9> name{"quorvane"};
  std::array<char, 8> command{"checker"};
  std::array<char, 15> showPrivate{"--show-private"};
  const bool text = talk == StandIn::Talk::LogWithText;
  std::array<char*, 4> arguments{name.data(), command.data(), text ? showPrivate.data() : nullptr,
                                 nullptr};
  ::execv("/proc/self/exe", arguments.data());
  ::_exit(127);
}

void waitTenMilliseconds() {
  constexpr timespec kPause{0, 10'000'000};
  ::nanosleep(&kPause, nullptr);
}

}  // namespace

StandIn::StandIn(Talk talk) {
  const pid_t parent = ::getpid();
  pid_ = ::fork();
  if (pid_ < 0) {
    throw std::system_error(errno, std::generic_category(),
                            "can't start the stand-in main application");
  }
  if (pid_ == 0) becomeStandIn(parent, talk);
}

bool StandIn::reap(int options) {
  if (ended_) return true;
  pid_t result = 0;
  do {
    result = ::waitpid(pid_, nullptr, options);
  } while (result < 0 && errno == EINTR);
  ended_ = result != 0;
  return ended_;
}

bool StandIn::running() { return !reap(WNOHANG); }

void StandIn::end() {
  if (reap(WNOHANG)) return;
  ::kill(pid_, SIGTERM);
  for (int i = 0; i < 200; ++i) {
    if (reap(WNOHANG)) return;
    waitTenMilliseconds();
  }
  ::kill(pid_, SIGKILL);
  reap(0);
}

}  // namespace quorvane
