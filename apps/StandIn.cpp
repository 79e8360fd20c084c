#include "apps/StandIn.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "apps/EndSignals.h"

namespace quorvane {
namespace {

/// Between fork and exec: only calls that are safe there. `arguments` ends with null.
[[noreturn]] void becomeStandIn(pid_t parent, int talk, char* const* arguments) {
  ::prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (::getppid() != parent) ::_exit(1);
  const sigset_t heldByParent = endSignals();
  ::sigprocmask(SIG_UNBLOCK, &heldByParent, nullptr);
  const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC);
  ::dup2(nothing, STDIN_FILENO);
  ::dup2(talk, STDERR_FILENO);
  ::dup2(STDERR_FILENO, STDOUT_FILENO);
  ::execv("/proc/self/exe", arguments);
  ::_exit(127);
}

/// A full pipe holds nobody up.
struct Pipe {
  desktop::Descriptor reader;
  desktop::Descriptor writer;

  Pipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
      throw std::system_error(errno, std::generic_category(), "can't hear the stand-in");
    }
    reader = desktop::Descriptor(ends[0]);
    writer = desktop::Descriptor(ends[1]);
  }
};

void waitTenMilliseconds() {
  constexpr timespec kPause{0, 10'000'000};
  ::nanosleep(&kPause, nullptr);
}

}  // namespace

std::vector<std::string> standInArguments(const checker::CheckerOptions& options, bool showText) {
  std::vector<std::string> words{"checker", "--smart-characters",
                                 std::to_string(options.smartCharacters)};
  if (options.popup) words.emplace_back("--popup");
  if (options.controlDigits) words.emplace_back("--control-digits");
  if (options.documentWindow) words.emplace_back("--document-window");
  if (showText) words.emplace_back("--show-private");
  return words;
}

StandIn::StandIn(Talk talk, const checker::CheckerOptions& options) {
  std::vector<std::string> words = standInArguments(options, talk == Talk::LogWithText);
  words.insert(words.begin(), "quorvane");
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const pid_t parent = ::getpid();
  Pipe pipe;
  const int told = talk == Talk::None ? pipe.writer.get() : STDERR_FILENO;
  if (talk == Talk::None) listener_ = std::move(pipe.reader);
  pid_ = ::fork();
  if (pid_ < 0) {
    throw std::system_error(errno, std::generic_category(),
                            "can't start the stand-in main application");
  }
  if (pid_ == 0) becomeStandIn(parent, told, arguments.data());
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

std::string StandIn::lastLine() {
  std::string text;
  std::array<char, 4096> part;
  ssize_t size = 0;
  while (listener_.valid() && (size = ::read(listener_.get(), part.data(), part.size())) > 0) {
    text.append(part.data(), static_cast<std::size_t>(size));
  }
  while (text.ends_with('\n')) text.pop_back();
  return text.substr(text.rfind('\n') + 1);
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
