#include "hosts/desktop/Supervisor.h"

#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstring>
#include <system_error>

#include "hosts/desktop/AtomicFile.h"
#include "hosts/desktop/LaunchedOutput.h"
#include "hosts/desktop/PlainFile.h"
#include "hosts/desktop/ProcessLiveness.h"
#include "hosts/desktop/Spawn.h"
#include "platform/LaunchServices.h"
#include "src/base/Checksum.h"

namespace quorvane::desktop {
namespace {

constexpr std::chrono::seconds kCrashWindow{60};
constexpr std::chrono::milliseconds kPatience{2000};
constexpr std::chrono::milliseconds kLockPatience{250};  // a key may wait for it

bool stillRuns(const LaunchStart& start) {
  return beginningOf(start.pid) == start.began && isRunning(start.pid);
}

bool failedAgainAndAgain(const LaunchStarts& starts) {
  const std::uint64_t now = ticksSinceBoot();
  const auto failures = std::ranges::count_if(starts, [now](const LaunchStart& start) {
    return !start.ready && start.began <= now && now - start.began < ticksOf(kCrashWindow);
  });
  return failures >= static_cast<std::ptrdiff_t>(kMostStarts);
}

/// Nobody would hear of its end.
[[noreturn]] void abandon(std::int32_t child) {
  const int reason = errno;
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  throw std::system_error(reason, std::generic_category(), "what was started can't be watched");
}

LaunchStarts readRecord(const std::filesystem::path& record) {
  const auto content = readPlainFile(record, kLaunchRecordLimit, Whose::Own);
  if (!content) return {};
  return parseLaunchStarts({reinterpret_cast<const char*>(content->data()), content->size()});
}

std::string howItEnded(std::optional<int> status) {
  if (!status) return "";
  if (WIFSIGNALED(*status)) return std::string(" (") + strsignal(WTERMSIG(*status)) + ")";
  return " (exit code " + std::to_string(WEXITSTATUS(*status)) + ")";
}

}  // namespace

struct Supervisor::Started {
  std::string name;
  std::filesystem::path record;
  std::int32_t pid = 0;
  Descriptor process{};
  bool ours = false;
  bool ready = false;
  bool givenUp = false;
  std::unique_ptr<LaunchedOutput> output{};  ///< null: it isn't ours, or talks elsewhere
  std::unique_ptr<Registration> endWatch{};
};

Supervisor::Supervisor(const DesktopConfiguration& configuration, const RuntimeFolder& folder,
                       RunLoop& runLoop, ProcessRegistry& registry, quorvane::LogSink& log)
    : configuration_(configuration),
      folder_(folder),
      runLoop_(runLoop),
      registry_(registry),
      log_(log),
      launches_(registry.addObserver(WorkspaceNotification::DidLaunchApplication,
                                     [this](const ApplicationNotification& launch) {
                                       announced(launch.application->processIdentifier);
                                     })) {}

Supervisor::~Supervisor() { end(); }

OSStatus Supervisor::launch(const std::filesystem::path& application) {
  launched_ = false;
  awaited_ = 0;
  try {
    const ApplicationPackage package = readApplicationPackage(application);
    const std::filesystem::path program = programOf(package);
    const bool hasSignature = package.signature != 0 && package.signature != "????"_4cc;
    const auto* const running = hasSignature ? registry_.findSignature(package.signature) : nullptr;
    if (running != nullptr && isRunning(running->pid)) return runsAlready();
    const Descriptor lock = folder_.lock(kLockPatience);
    return launchLocked(package, program);
  } catch (const std::exception& failure) {
    complain(failure.what());
    return kLSUnknownErr;
  }
}

OSStatus Supervisor::runsAlready() {
  launched_ = true;
  return noErr;
}

OSStatus Supervisor::launchLocked(const ApplicationPackage& package,
                                  const std::filesystem::path& program) {
  const std::filesystem::path record = recordOf(package);
  LaunchStarts starts = readRecord(record);
  if (const auto pid = livingOne(record, starts)) return livesAlready(package.name(), record, pid);
  if (failedAgainAndAgain(starts)) {
    complain(package.name() +
             " has ended three times within a minute before it was ready; it isn't started again"
             " before that minute is over");
    return kLSUnknownErr;
  }
  starts.push_back(start(package, program, record));
  writeRecord(record, starts);
  return noErr;
}

/// 0: none. A record that can't be written tells of nobody.
std::int32_t Supervisor::livingOne(const std::filesystem::path& record,
                                   const LaunchStarts& starts) const {
  if (!starts.empty() && stillRuns(starts.back())) return starts.back().pid;
  const auto own = std::ranges::find_if(started_, [&record](const auto& started) {
    return started->record == record && isRunning(started->pid);
  });
  return own == started_.end() ? 0 : (*own)->pid;
}

OSStatus Supervisor::livesAlready(const std::string& name, const std::filesystem::path& record,
                                  std::int32_t pid) {
  if (registry_.find(pid) != nullptr) return runsAlready();
  awaited_ = pid;
  if (find(pid) != started_.end()) return noErr;
  auto started = std::make_unique<Started>(Started{.name = name, .record = record, .pid = pid});
  started->process = openProcess(pid);
  if (started->process.valid()) watch(std::move(started));
  return noErr;
}

LaunchStart Supervisor::start(const ApplicationPackage& package,
                              const std::filesystem::path& program,
                              const std::filesystem::path& record) {
  auto started =
      std::make_unique<Started>(Started{.name = package.name(), .record = record, .ours = true});
  if (!configuration_.launchedOutput) {
    started->output = std::make_unique<LaunchedOutput>(started->name, runLoop_, log_);
  }
  started->pid =
      spawn({.program = program,
             .arguments = package.launcher.arguments,
             .variables = {{"QUORVANE_RUNTIME_DIR", configuration_.runtimeDirectory},
                           {"QUORVANE_KEY_OFFSET", std::to_string(configuration_.keyOffset)},
                           {"QUORVANE_DATA_DIR", configuration_.dataDirectory},
                           {"QUORVANE_BUNDLE_DIR", configuration_.bundleDirectory}},
             .output = started->output ? started->output->writer() : *configuration_.launchedOutput,
             .endsWithParent = configuration_.endsWhatItLaunches});
  if (started->output) started->output->closeWriter();
  started->process = openChild(started->pid);
  if (!started->process.valid()) abandon(started->pid);
  awaited_ = started->pid;
  const LaunchStart result{started->pid, beginningOf(started->pid).value_or(0)};
  watch(std::move(started));
  return result;
}

void Supervisor::watch(std::unique_ptr<Started> started) {
  const std::int32_t pid = started->pid;
  started->endWatch =
      runLoop_.watch(started->process.get(), G_IO_IN, [this, pid](GIOCondition) { ended(pid); });
  started_.push_back(std::move(started));
}

bool Supervisor::awaitsOne() const {
  const auto started = find(awaited_);
  return started != started_.end() && !(*started)->ready && !(*started)->givenUp;
}

void Supervisor::stopAwaiting() {
  const auto started = find(awaited_);
  if (started != started_.end()) (*started)->givenUp = true;
}

void Supervisor::announced(std::int32_t pid) {
  const auto started = find(pid);
  if (started == started_.end() || (*started)->ready) return;
  (*started)->ready = true;
  launched_ = launched_ || pid == awaited_;
  const Descriptor lock = folder_.lock(kLockPatience);
  LaunchStarts starts = readRecord((*started)->record);
  std::erase_if(starts, [pid](const LaunchStart& start) { return start.pid != pid; });
  if (starts.empty()) return;
  starts.back().ready = true;
  writeRecord((*started)->record, starts);
}

void Supervisor::ended(std::int32_t pid) {
  const auto found = find(pid);
  if (found == started_.end()) return;
  const auto at = started_.begin() + (found - started_.begin());
  const std::unique_ptr<Started> started = std::move(*at);
  started_.erase(at);
  int status = 0;
  const bool waited = started->ours && waitpid(pid, &status, WNOHANG) == pid;
  if (started->output) {
    started->output->read();
    started->output->end();
  }
  if (!started->ready) tellOfEnd(*started, waited ? std::optional(status) : std::nullopt);
}

void Supervisor::tellOfEnd(const Started& started, std::optional<int> status) {
  std::string text = started.name + " has ended before it was ready" + howItEnded(status);
  if (started.output && !started.output->lastLine().empty()) {
    text.append(" and said last: ").append(started.output->lastLine());
  }
  complain(text);
}

void Supervisor::complain(const std::string& what) {
  trouble_ = what;
  if (log_.enabled) log_.writeLine(what);
}

void Supervisor::end() {
  if (!configuration_.endsWhatItLaunches) return;
  std::vector<Descriptor> processes;
  for (const auto& started : started_) {
    if (started->ours) processes.push_back(std::move(started->process));
  }
  endProcesses(processes, kPatience);
  for (const auto& started : started_) {
    if (started->ours) waitpid(started->pid, nullptr, WNOHANG);
  }
  started_.clear();
}

Supervisor::Starteds::const_iterator Supervisor::find(std::int32_t pid) const {
  return std::ranges::find_if(started_, [pid](const auto& started) { return started->pid == pid; });
}

/// Two applications of one name in two folders are two.
std::filesystem::path Supervisor::recordOf(const ApplicationPackage& package) const {
  constexpr std::size_t kLongestName = 200;
  const std::string whole = std::filesystem::canonical(package.folder);
  const std::uint64_t sum =
      checksum({reinterpret_cast<const std::uint8_t*>(whole.data()), whole.size()});
  std::array<char, 16> digits;
  char* const end = std::to_chars(digits.begin(), digits.end(), sum, 16).ptr;
  std::string name = ".starts-" + package.name().substr(0, kLongestName) + "-";
  return folder_ / name.append(digits.begin(), end);
}

void Supervisor::writeRecord(const std::filesystem::path& record, const LaunchStarts& starts) {
  if (writeFileAtomically(record, formatLaunchStarts(starts), Durability::UntilReboot)) return;
  complain(record.string() + ": can't be written: " + std::strerror(errno));
}

}  // namespace quorvane::desktop
