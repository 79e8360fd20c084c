#include "hosts/memory/MemoryLaunchServices.h"

#include <algorithm>
#include <utility>

namespace quorvane::memory {
namespace {

constexpr OSStatus kEventLoopQuit = -9876;

}  // namespace

MemoryLaunchServices::MemoryLaunchServices(Journal& journal, MemoryClock& clock,
                                           MemoryFileManager& files, MemoryProcesses& processes,
                                           MemoryMainApplication& mainApplication)
    : journal_(journal),
      clock_(clock),
      files_(files),
      processes_(processes),
      mainApplication_(mainApplication) {
  processes_.launch = [this](const std::string& path) { return open(path); };
}

OSStatus MemoryLaunchServices::LSOpenFromRefSpec(const FSRef& ref, std::uint32_t launchFlags) {
  std::string path;
  files_.FSRefMakePath(ref, path);
  const std::size_t line =
      journal_.call("LSOpenFromRefSpec ", path, " ", Journal::Hex{launchFlags});
  const auto* const application = find(path);
  awaited_ = path;
  arrived_ = application != nullptr && isRunning(*application);
  return journal_.result(line, open(path) ? noErr : kLSUnknownErr);
}

OSStatus MemoryLaunchServices::ReceiveNextEvent(FourCharCode eventClass, std::uint32_t kind,
                                                Seconds timeout) {
  const std::size_t line = journal_.call("ReceiveNextEvent ", Journal::Code{eventClass}, " ", kind,
                                         " ", timeout.count());
  if (otherEvents > 0) {
    --otherEvents;
    return journal_.result(line, kEventLoopQuit);
  }
  const bool launches = eventClass == kEventClassApplication && kind == kEventAppLaunchNotification;
  const bool came = turnUntil([&] { return launches && arrived_; },
                              static_cast<std::uint64_t>(timeout.count() * 1e9));
  if (came) arrived_ = false;
  return journal_.result(line, came ? noErr : eventLoopTimedOutErr);
}

void MemoryLaunchServices::install(MemoryInstalledApplication application) {
  files_.makeFolder(application.path);
  installed_.push_back(std::move(application));
}

MemoryInstalledApplication* MemoryLaunchServices::find(const std::string& path) {
  const auto found = std::ranges::find(installed_, path, &MemoryInstalledApplication::path);
  return found == installed_.end() ? nullptr : &*found;
}

MemoryInstalledApplication* MemoryLaunchServices::findSignature(FourCharCode signature) {
  const auto found = std::ranges::find_if(
      installed_, [&](const auto& each) { return each.process.signature == signature; });
  return found == installed_.end() ? nullptr : &*found;
}

bool MemoryLaunchServices::isRunning(const MemoryInstalledApplication& application) const {
  return processes_.findSignature(application.process.signature) != nullptr;
}

bool MemoryLaunchServices::open(const std::string& path) {
  auto* const application = find(path);
  if (application == nullptr || application->fails) return false;
  if (isRunning(*application) || application->starting || !application->afterTicks) return true;
  application->starting = true;
  if (application->whenItStarts) clock_.schedule(0, application->whenItStarts);
  clock_.schedule(static_cast<std::uint64_t>(*application->afterTicks *
                                             static_cast<double>(kNanosecondsPerTick)),
                  [this, path] { run(path); });
  return true;
}

void MemoryLaunchServices::run(const std::string& path) {
  const MemoryInstalledApplication application = *find(path);
  find(path)->starting = false;
  if (application.whenItRuns) application.whenItRuns();
  if (application.process.signature == MemoryMainApplication::kSignature) {
    mainApplication_.launch();
  } else {
    processes_.add(application.process);
  }
  if (path == awaited_) arrived_ = true;
}

}  // namespace quorvane::memory
