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
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGCHLD}) signal(number, SIG_DFL);
  signal(SIGPIPE, SIG_IGN);
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
  const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
  dup2(nothing, STDIN_FILENO);
  dup2(spawned.output >= 0 ? spawned.output : nothing, STDERR_FILENO);
  dup2(STDERR_FILENO, STDOUT_FILENO);
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
