#include "hosts/desktop/Supervisor.h"

#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>

#include "hosts/desktop/AtomicFile.h"
#include "hosts/desktop/LaunchedOutput.h"
#include "hosts/desktop/PlainFile.h"
#include "hosts/desktop/ProcessLiveness.h"
#include "hosts/desktop/Spawn.h"
#include "platform/LaunchServices.h"

namespace quorvane::desktop {
namespace {

constexpr std::chrono::seconds kCrashWindow{60};
constexpr std::chrono::milliseconds kPatience{2000};

bool lives(const LaunchStart& start) {
  return beginningOf(start.pid) == start.began && isRunning(start.pid);
}

bool failedAgainAndAgain(const LaunchStarts& starts) {
  const std::uint64_t now = ticksSinceBoot();
  const auto failures = std::ranges::count_if(starts, [now](const LaunchStart& start) {
    return !start.ready && start.began <= now && now - start.began < ticksOf(kCrashWindow);
  });
  return failures >= static_cast<std::ptrdiff_t>(kMostStarts);
}

std::string howItEnded(std::optional<int> status) {
  if (!status) return "";
  if (WIFSIGNALED(*status)) return std::string(" (") + strsignal(WTERMSIG(*status)) + ")";
  return " (exit code " + std::to_string(WEXITSTATUS(*status)) + ")";
}

}  // namespace

struct Supervisor::Started {
  std::string name;
  std::int32_t pid = 0;
  Descriptor process{};
  bool ours = false;
  bool ready = false;
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
  try {
    const ApplicationPackage package = readApplicationPackage(application);
    const std::filesystem::path program = programOf(package);
    const bool hasSignature = package.signature != 0 && package.signature != "????"_4cc;
    const auto* const running = hasSignature ? registry_.findSignature(package.signature) : nullptr;
    if (running != nullptr && isRunning(running->pid)) return runsAlready();
    const Descriptor lock = folder_.lock();
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
  LaunchStarts starts = readRecord(package.name());
  if (!starts.empty() && lives(starts.back())) {
    const std::int32_t pid = starts.back().pid;
    if (registry_.find(pid) != nullptr) return runsAlready();
    if (find(pid) != started_.end()) return noErr;
    auto started = std::make_unique<Started>(Started{.name = package.name(), .pid = pid});
    started->process = openProcess(pid);
    if (started->process.valid()) watch(std::move(started));
    return noErr;
  }
  if (failedAgainAndAgain(starts)) {
    complain(package.name() +
             " has ended three times within a minute before it was ready; it isn't started again"
             " before that minute is over");
    return kLSUnknownErr;
  }
  starts.push_back(start(package, program));
  writeRecord(package.name(), starts);
  return noErr;
}

LaunchStart Supervisor::start(const ApplicationPackage& package,
                              const std::filesystem::path& program) {
  auto started = std::make_unique<Started>(Started{.name = package.name(), .ours = true});
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
  launched_ = false;
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
  return std::ranges::any_of(started_, [](const auto& started) { return !started->ready; });
}

void Supervisor::announced(std::int32_t pid) {
  const auto started = find(pid);
  if (started == started_.end() || (*started)->ready) return;
  (*started)->ready = true;
  launched_ = true;
  const Descriptor lock = folder_.lock();
  LaunchStarts starts = readRecord((*started)->name);
  std::erase_if(starts, [pid](const LaunchStart& start) { return start.pid != pid; });
  if (starts.empty()) return;
  starts.back().ready = true;
  writeRecord((*started)->name, starts);
}

void Supervisor::ended(std::int32_t pid) {
  const auto found = find(pid);
  if (found == started_.end()) return;
  const std::unique_ptr<Started> started = std::move(*found);
  started_.erase(found);
  int status = 0;
  const bool waited = started->ours && waitpid(pid, &status, WNOHANG) == pid;
  if (started->output) started->output->read();
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

std::vector<std::unique_ptr<Supervisor::Started>>::iterator Supervisor::find(std::int32_t pid) {
  return std::ranges::find_if(started_, [pid](const auto& started) { return started->pid == pid; });
}

std::filesystem::path Supervisor::recordOf(const std::string& name) const {
  return folder_ / (".starts-" + name);
}

LaunchStarts Supervisor::readRecord(const std::string& name) const {
  const auto content = readPlainFile(recordOf(name), kLaunchRecordLimit, Links::Refuse);
  return content
             ? parseLaunchStarts({reinterpret_cast<const char*>(content->data()), content->size()})
             : LaunchStarts();
}

void Supervisor::writeRecord(const std::string& name, const LaunchStarts& starts) {
  const auto file = recordOf(name);
  if (writeFileAtomically(file, formatLaunchStarts(starts), Durability::UntilReboot)) return;
  complain(file.string() + ": can't be written: " + std::strerror(errno));
}

}  // namespace quorvane::desktop
