#include "hosts/desktop/ProcessLiveness.h"

#include <poll.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

namespace quorvane::desktop {
namespace {

using std::chrono::milliseconds;
using SteadyTime = std::chrono::steady_clock::time_point;

bool isOfThisUser(std::int32_t pid) {
  struct stat status {};
  const std::string path = "/proc/" + std::to_string(pid);
  return stat(path.c_str(), &status) == 0 && status.st_uid == geteuid();
}

/// By then; a signal that comes meanwhile is no end.
bool hasEndedBy(const Descriptor& process, SteadyTime deadline) {
  pollfd entry{process.get(), POLLIN, 0};
  int ready = -1;
  do {
    const auto left = std::chrono::ceil<milliseconds>(deadline - SteadyTime::clock::now());
    ready = poll(&entry, 1, static_cast<int>(std::max(left.count(), milliseconds::rep{0})));
  } while (ready < 0 && errno == EINTR);
  return ready > 0;
}

/// Until then or until all have ended.
bool haveEndedBy(std::span<const Descriptor> processes, SteadyTime deadline) {
  return std::ranges::all_of(
      processes, [deadline](const Descriptor& each) { return hasEndedBy(each, deadline); });
}

void signalAll(std::span<const Descriptor> processes, int number) {
  for (const Descriptor& process : processes) signalProcess(process, number);
}

}  // namespace

bool signalProcess(const Descriptor& process, int number) {
  return syscall(SYS_pidfd_send_signal, process.get(), number, nullptr, 0) == 0;
}

bool endProcesses(std::span<const Descriptor> processes, milliseconds patience) {
  signalAll(processes, SIGTERM);
  if (haveEndedBy(processes, SteadyTime::clock::now() + patience)) return true;
  signalAll(processes, SIGKILL);
  return haveEndedBy(processes, SteadyTime::clock::now() + std::chrono::seconds(2));
}

/// The 22nd field; the second one is a name in parentheses, which may hold anything.
std::optional<std::uint64_t> beginningOf(std::int32_t pid) {
  std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
  const std::string all{std::istreambuf_iterator<char>(file), {}};
  const std::size_t behindName = all.rfind(')');
  if (behindName == std::string::npos) return {};
  std::istringstream fields(all.substr(behindName + 1));
  std::string skipped;
  for (int field = 3; field < 22; ++field) fields >> skipped;
  std::uint64_t began = 0;
  return fields >> began ? std::optional(began) : std::nullopt;
}

std::uint64_t ticksOf(std::chrono::seconds duration) {
  static const auto perSecond = static_cast<std::uint64_t>(sysconf(_SC_CLK_TCK));
  return static_cast<std::uint64_t>(duration.count()) * perSecond;
}

std::uint64_t ticksSinceBoot() {
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  const auto perSecond = ticksOf(std::chrono::seconds(1));
  return ticksOf(std::chrono::seconds(now.tv_sec)) +
         static_cast<std::uint64_t>(now.tv_nsec) * perSecond / 1'000'000'000;
}

bool beganBefore(std::int32_t pid, const std::filesystem::path& file) {
  constexpr std::int64_t kTolerance = 2;  // seconds
  struct stat status {};
  const auto began = beginningOf(pid);
  if (!began || lstat(file.c_str(), &status) != 0) return false;
  const auto age =
      (static_cast<std::int64_t>(ticksSinceBoot()) - static_cast<std::int64_t>(*began)) /
      static_cast<std::int64_t>(ticksOf(std::chrono::seconds(1)));
  return time(nullptr) - age <= status.st_mtim.tv_sec + kTolerance;
}

Descriptor openChild(std::int32_t pid) {
  return Descriptor(static_cast<int>(syscall(SYS_pidfd_open, pid, 0)));
}

Descriptor openProcess(std::int32_t pid) {
  Descriptor process = openChild(pid);
  if (!process.valid() || hasEndedBy(process, SteadyTime()) || !isOfThisUser(pid)) return {};
  return process;
}

}  // namespace quorvane::desktop
