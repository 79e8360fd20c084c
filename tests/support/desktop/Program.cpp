#include "tests/support/desktop/Program.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <stdexcept>
#include <utility>

#include "tests/support/RunningProgram.h"

namespace quorvane::tests {
namespace {

/// Both ends of a connection for a program that speaks; none for one that doesn't.
struct Ends {
  explicit Ends(bool wanted) {
    if (wanted && ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, both) != 0) {
      throw std::runtime_error("no connection to a program");
    }
  }
  int both[2] = {-1, -1};
};

[[noreturn]] void become(const Launch& launch, int end, pid_t parent) {
  ::setpgid(0, 0);
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (::getppid() != parent) ::_exit(126);
  const int log = ::open(launch.log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
  ::dup2(end >= 0 ? end : ::open("/dev/null", O_RDONLY), STDIN_FILENO);
  ::dup2(end >= 0 ? end : log, STDOUT_FILENO);
  ::dup2(log, STDERR_FILENO);
  const std::vector<char*> arguments = pointersTo(launch.command);
  ::execvpe(arguments.front(), arguments.data(), pointersTo(launch.variables).data());
  ::_exit(127);
}

}  // namespace

void Lines::send(const std::string& line) const {
  const std::string whole = line + '\n';
  const auto sent = ::send(descriptor_.get(), whole.data(), whole.size(), MSG_NOSIGNAL);
  if (sent != static_cast<ssize_t>(whole.size())) throw std::runtime_error("can't send: " + line);
}

bool Lines::take(int milliseconds) {
  pollfd waiting{descriptor_.get(), POLLIN, 0};
  if (::poll(&waiting, 1, milliseconds) <= 0) return false;
  std::array<char, 4096> part;
  const ssize_t size = ::read(descriptor_.get(), part.data(), part.size());
  if (size <= 0) return false;
  rest_.append(part.data(), static_cast<std::size_t>(size));
  for (std::size_t end = 0; (end = rest_.find('\n')) != std::string::npos;) {
    lines_.push_back(rest_.substr(0, end));
    rest_.erase(0, end + 1);
  }
  return true;
}

std::string Lines::await(std::string_view beginning) {
  constexpr int kLongest = 20'000;
  for (;;) {
    while (read_ < lines_.size()) {
      const std::string& line = lines_[read_++];
      if (line.starts_with(beginning)) return line.substr(beginning.size());
    }
    if (!take(kLongest)) break;
  }
  throw std::runtime_error("no line \"" + std::string(beginning) + "\", the last one was \"" +
                           (lines_.empty() ? "" : lines_.back()) + '"');
}

std::optional<std::string> Lines::last(std::string_view beginning) {
  while (take(0)) continue;
  const auto found = std::find_if(lines_.rbegin(), lines_.rend(), [&](const std::string& line) {
    return line.starts_with(beginning);
  });
  if (found == lines_.rend()) return std::nullopt;
  return found->substr(beginning.size());
}

void Lines::skip() {
  while (take(0)) continue;
  read_ = lines_.size();
}

Program::Program(const Launch& launch) : Program(launch, Ends(launch.speaks).both) {}

Program::Program(const Launch& launch, const int (&ends)[2]) : lines_(ends[0]) {
  const pid_t parent = ::getpid();
  ::prctl(PR_SET_CHILD_SUBREAPER, 1);
  pid_ = ::fork();
  if (pid_ == 0) become(launch, ends[1], parent);
  if (ends[1] >= 0) ::close(ends[1]);
  if (pid_ < 0) throw std::runtime_error("can't fork");
  ::setpgid(pid_, pid_);
}

void Program::signal(int number) const {
  if (pid_ > 0) ::kill(pid_, number);
}

void Program::kill() {
  if (pid_ <= 0) return;
  ::kill(-pid_, SIGKILL);
  while (::waitpid(-pid_, nullptr, 0) > 0) continue;  // what it has started is ours by then
  pid_ = -1;
}

int Program::wait() {
  int status = 0;
  ::waitpid(std::exchange(pid_, -1), &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace quorvane::tests
