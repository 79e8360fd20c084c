#include "hosts/desktop/Spawn.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <system_error>

namespace quorvane::desktop {
namespace {

constexpr int kCantBeRun = 127;

std::vector<std::string> environmentOf(const Spawned& spawned) {
  std::vector<std::string> all;
  for (const auto& [name, value] : spawned.variables)
    all.push_back(std::string(name).append("=").append(value));
  const auto isReplaced = [&spawned](std::string_view variable) {
    return std::ranges::any_of(spawned.variables, [variable](const auto& each) {
      return variable.starts_with(each.first + "=");
    });
  };
  for (char** each = environ; *each != nullptr; ++each) {
    if (!isReplaced(*each)) all.emplace_back(*each);
  }
  return all;
}

std::vector<char*> nullTerminated(std::vector<std::string>& words) {
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  return pointers;
}

void resetSignals() {
  for (int number = 1; number < NSIG; ++number) signal(number, SIG_DFL);
  signal(SIGPIPE, SIG_IGN);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
}

/// Where no copy to 0, 1 or 2 writes over it.
int aboveStandard(int descriptor) {
  const int above = fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  if (above < 0) _exit(kCantBeRun);
  return above;
}

void setStandard(int output) {
  const int nothing = aboveStandard(open("/dev/null", O_RDWR | O_CLOEXEC));
  const int out = output >= 0 ? aboveStandard(output) : nothing;
  dup2(nothing, STDIN_FILENO);
  dup2(out, STDOUT_FILENO);
  dup2(out, STDERR_FILENO);
  close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
}

/// Between fork and exec: only calls that are safe there.
[[noreturn]] void become(const Spawned& spawned, pid_t parent, char* const* arguments,
                         char* const* environment) {
  setsid();
  resetSignals();
  if (spawned.endsWithParent) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent) _exit(1);
  }
  setStandard(spawned.output);
  if (chdir("/") == 0) execve(spawned.program.c_str(), arguments, environment);
  _exit(kCantBeRun);
}

}  // namespace

pid_t spawn(const Spawned& spawned) {
  std::vector<std::string> words{spawned.program.string()};
  words.insert(words.end(), spawned.arguments.begin(), spawned.arguments.end());
  std::vector<std::string> environment = environmentOf(spawned);
  const auto arguments = nullTerminated(words);
  const auto variables = nullTerminated(environment);
  const pid_t parent = getpid();
  const pid_t pid = fork();
  if (pid < 0) throw std::system_error(errno, std::generic_category(), spawned.program.string());
  if (pid == 0) become(spawned, parent, arguments.data(), variables.data());
  return pid;
}

}  // namespace quorvane::desktop
