#include "bench/ColdStart.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "hosts/desktop/Descriptor.h"
#include "hosts/desktop/StatusFile.h"

namespace quorvane::bench {
namespace {

using desktop::Descriptor;
using std::filesystem::path;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int kRounds = 5;
constexpr std::chrono::minutes kPatience{1};

/// What is seen from outside at the end of each step, in order: a look into the application folder,
/// an entry of the runtime folder that comes, or a number of the input method's status.
struct Step {
  const char* name;
  std::string_view sign;
};
constexpr std::string_view kLook = "a look";
constexpr std::string_view kKeys = "all keys handled";
constexpr std::string_view kFix = "a fix in the document";
constexpr std::array<Step, 7> kSteps{{{"input-method-start", kLook},
                                      {"discovery", ".starts-Quorvane.app"},
                                      {"launch", "Quorvane.server"},
                                      {"dictionary", ".process"},
                                      {"rest-of-start", ".status"},
                                      {"scan", kKeys},
                                      {"fix", kFix}}};
using Times = std::array<double, kSteps.size()>;

constexpr std::string_view kTyped = "teh ";

class Run {
 public:
  Run(const path& program, const path& home) : folder_(home / "run") {
    std::filesystem::create_directory(folder_);
    std::filesystem::permissions(folder_, std::filesystem::perms::owner_all);
    std::ofstream(home / "typed") << kTyped;
    ::inotify_add_watch(events_.get(), folder_.c_str(), IN_CREATE | IN_MOVED_TO);
    const path applications = program.parent_path().parent_path() / "data" / "Applications";
    ::inotify_add_watch(events_.get(), applications.c_str(), IN_OPEN);
    began_ = Clock::now();
    pid_ = ::fork();
    if (pid_ == 0) become(program, home);
  }
  ~Run() {
    ::kill(pid_, SIGTERM);
    ::waitpid(pid_, nullptr, 0);
  }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  /// Throws where a step takes longer than a minute.
  Times times() {
    while (step_ < kSteps.size()) {
      const bool hasStatus = kSteps[step_].sign == kKeys || kSteps[step_].sign == kFix;
      hasStatus ? lookAtStatus() : awaitEvents();
      if (Clock::now() - began_ < kPatience) continue;
      throw std::runtime_error(std::string("no end of ") + kSteps[step_].name);
    }
    return times_;
  }

 private:
  [[noreturn]] void become(const path& program, const path& home) {
    const auto redirect = [](const path& file, int flags, int to) {
      ::dup2(::open(file.c_str(), flags | O_CLOEXEC), to);
    };
    redirect(home / "typed", O_RDONLY, STDIN_FILENO);
    redirect("/dev/null", O_WRONLY, STDOUT_FILENO);
    redirect("/dev/null", O_WRONLY, STDERR_FILENO);
    for (const char* const unset : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME",
                                    "QUORVANE_DATA_DIR", "QUORVANE_BUNDLE_DIR"}) {
      ::unsetenv(unset);
    }
    ::setenv("HOME", home.c_str(), 1);
    ::setenv("QUORVANE_RUNTIME_DIR", folder_.c_str(), 1);
    ::execl(program.c_str(), "quorvane", "type", nullptr);
    ::_exit(127);
  }

  void awaitEvents() {
    pollfd polled{events_.get(), POLLIN, 0};
    if (::poll(&polled, 1, 1000) <= 0) return;
    alignas(inotify_event) std::array<char, 16 * 1024> bytes;
    const ssize_t size = ::read(events_.get(), bytes.data(), bytes.size());
    for (const char* at = bytes.data(); at < bytes.data() + size;) {
      const auto& event = *reinterpret_cast<const inotify_event*>(at);
      at += sizeof(inotify_event) + event.len;
      seen((event.mask & IN_OPEN) != 0 ? kLook : event.len != 0 ? event.name : "");
    }
  }

  void lookAtStatus() {
    std::this_thread::sleep_for(std::chrono::microseconds(100));
    const auto status = desktop::readStatusFile(desktop::statusFileOf(folder_, pid_));
    if (!status) return;
    if (status->keys >= kTyped.size()) seen(kKeys);
    if (status->fixes > 0) seen(kFix);
  }

  void seen(std::string_view sign) {
    if (step_ == kSteps.size() || sign.find(kSteps[step_].sign) == sign.npos) return;
    times_[step_++] = Milliseconds(Clock::now() - began_).count();
  }

  path folder_;
  Descriptor events_{::inotify_init1(IN_CLOEXEC)};
  Clock::time_point began_;
  pid_t pid_ = -1;
  std::size_t step_ = 0;
  Times times_{};
};

double median(std::vector<double> values) {
  std::ranges::nth_element(values, values.begin() + kRounds / 2);
  return values[kRounds / 2];
}

void print(const char* kind, const std::vector<Times>& runs) {
  const auto medianOf = [&runs](auto value) {
    std::vector<double> values;
    std::ranges::transform(runs, std::back_inserter(values), value);
    return median(std::move(values));
  };
  const double whole = medianOf([](const Times& times) { return times.back(); });
  for (std::size_t i = 0; i < kSteps.size(); ++i) {
    const double step =
        medianOf([i](const Times& times) { return times[i] - (i == 0 ? 0 : times[i - 1]); });
    std::printf("step %s %s %.2f ms, %.1f %%\n", kind, kSteps[i].name, step, 100 * step / whole);
  }
  std::printf("time %s-to-first-corrected-word %.1f ms\n", kind, whole);
}

void measure(const path& program) {
  std::array<std::vector<Times>, 2> runs;
  for (int round = 0; round < kRounds; ++round) {
    std::string home = std::filesystem::temp_directory_path() / "quorvane-cold-XXXXXX";
    if (::mkdtemp(home.data()) == nullptr) throw std::runtime_error("no temporary folder");
    for (auto& kind : runs) {
      kind.push_back(Run(program, home).times());
      std::filesystem::remove_all(home + "/run");
    }
    std::filesystem::remove_all(home);
  }
  print("cold-start", runs[0]);
  print("second-start", runs[1]);
}

}  // namespace

void printColdStart() {
  const path own = std::filesystem::read_symlink("/proc/self/exe");
  try {
    measure(own.parent_path().parent_path() / "quorvane");
  } catch (const std::exception& failure) {
    std::printf("no cold start: %s\n", failure.what());
  }
}

}  // namespace quorvane::bench
