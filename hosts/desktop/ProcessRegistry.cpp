#include "hosts/desktop/ProcessRegistry.h"

#include <sys/inotify.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <stdexcept>

#include "hosts/desktop/AtomicFile.h"
#include "hosts/desktop/PlainFile.h"
#include "hosts/desktop/ProcessLiveness.h"

namespace quorvane::desktop {
namespace {

constexpr std::size_t kNotFound = ~std::size_t{0};

NSRunningApplication applicationOf(const AnnouncedProcess& process) {
  return {process.pid, process.announcement.bundleIdentifier, false};
}

}  // namespace

struct ProcessRegistry::ObserverEntry {
  WorkspaceNotification name;
  Workspace::Observer call;
  bool active = true;
};

class ProcessRegistry::ObserverOwner final : public Registration {
 public:
  explicit ObserverOwner(std::shared_ptr<ObserverEntry> entry) : entry_(std::move(entry)) {}
  ~ObserverOwner() override { entry_->active = false; }
  ObserverOwner(const ObserverOwner&) = delete;
  ObserverOwner& operator=(const ObserverOwner&) = delete;

 private:
  std::shared_ptr<ObserverEntry> entry_;
};

class ProcessRegistry::AnnouncementOwner final : public Registration {
 public:
  explicit AnnouncementOwner(std::shared_ptr<ProcessRegistry*> registry)
      : registry_(std::move(registry)) {}
  ~AnnouncementOwner() override {
    if (*registry_ != nullptr) (*registry_)->withdraw();
  }
  AnnouncementOwner(const AnnouncementOwner&) = delete;
  AnnouncementOwner& operator=(const AnnouncementOwner&) = delete;

 private:
  std::shared_ptr<ProcessRegistry*> registry_;
};

ProcessRegistry::ProcessRegistry(const RuntimeFolder& folder, RunLoop& runLoop,
                                 quorvane::LogSink& log, const Announcement& ownProcess)
    : folder_(folder),
      runLoop_(runLoop),
      log_(log),
      self_(std::make_shared<ProcessRegistry*>(this)) {
  add({getpid(), ownProcess}, {});
  watchFolder();
  scanFolder();
  observing_ = true;
}

ProcessRegistry::~ProcessRegistry() {
  withdraw();
  *self_ = nullptr;
}

std::unique_ptr<Registration> ProcessRegistry::announce(const Announcement& announcement) {
  const AnnouncedProcess process{ownPid(), announcement};
  const auto content = formatAnnouncement(process);
  if (!content) throw std::runtime_error("announcement: a name, code or identifier is invalid");
  const auto path = announcementOf(ownPid());
  if (!writeFileAtomically(path, *content, Durability::UntilReboot)) {
    throw std::runtime_error(path.string() + ": can't be written (" + std::strerror(errno) +
                             "); make room there or set QUORVANE_RUNTIME_DIR to another folder");
  }
  announced_ = true;
  const bool wasActive = applications_.front().isActive;
  processes_.front() = process;
  applications_.front() = applicationOf(process);
  applications_.front().isActive = wasActive;
  return std::make_unique<AnnouncementOwner>(self_);
}

bool ProcessRegistry::note(const AnnouncedProcess& process) {
  constexpr std::int32_t kHighestPid = 1 << 22;
  if (find(process.pid) != nullptr) return true;
  Descriptor descriptor = openProcess(process.pid);
  if (process.pid <= kHighestPid && !descriptor.valid()) return false;
  add(process, std::move(descriptor));
  return true;
}

void ProcessRegistry::withdraw() {
  if (!std::exchange(announced_, false)) return;
  const std::filesystem::path file = announcementOf(ownPid());
  const std::filesystem::path away = folder_ / ("." + announcementFileName(ownPid()) + ".over");
  rename(file.c_str(), away.c_str());
  unlink(away.c_str());
}

bool ProcessRegistry::setFrontApplication(std::int32_t pid) {
  if (pid != 0 && find(pid) == nullptr) return false;
  if (pid == frontPid_) return true;
  frontPid_ = pid;
  for (NSRunningApplication& application : applications_) {
    application.isActive = application.processIdentifier == pid;
  }
  if (pid != 0) activated_.push_back(applications_[indexOf(pid)]);
  activation_ = runLoop_.addTimer(RunLoop::Milliseconds(0), [this] {
    for (const auto& application : std::exchange(activated_, {})) {
      notify(WorkspaceNotification::DidActivateApplication, application);
    }
    return false;
  });
  return true;
}

const AnnouncedProcess* ProcessRegistry::find(std::int32_t pid) const {
  const std::size_t index = indexOf(pid);
  return index == kNotFound ? nullptr : &processes_[index];
}

const AnnouncedProcess* ProcessRegistry::findSignature(FourCharCode signature) const {
  const auto found = std::find_if(
      std::next(processes_.begin()), processes_.end(),
      [signature](const auto& each) { return each.announcement.signature == signature; });
  return found == processes_.end() ? nullptr : &*found;
}

bool ProcessRegistry::signal(std::int32_t pid, int number) const {
  if (pid == ownPid()) return kill(pid, number) == 0;
  const std::size_t index = indexOf(pid);
  return index != kNotFound && signalProcess(liveness_[index].descriptor, number);
}

std::unique_ptr<Registration> ProcessRegistry::addObserver(WorkspaceNotification name,
                                                           Workspace::Observer observer) {
  std::erase_if(observers_, [](const auto& entry) { return !entry->active; });
  observers_.push_back(std::make_shared<ObserverEntry>(ObserverEntry{name, std::move(observer)}));
  return std::make_unique<ObserverOwner>(observers_.back());
}

void ProcessRegistry::watchFolder() {
  folderEvents_ = Descriptor(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
  constexpr std::uint32_t kEvents =
      IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_ONLYDIR;
  if (inotify_add_watch(folderEvents_.get(), folder_.path().c_str(), kEvents) < 0) {
    throw std::runtime_error("runtime folder " + folder_.path().string() + ": can't be watched (" +
                             std::strerror(errno) + "); raise fs.inotify.max_user_instances");
  }
  folderWatch_ = runLoop_.watch(folderEvents_.get(), G_IO_IN, [this](GIOCondition) { refresh(); });
}

void ProcessRegistry::refresh() {
  alignas(inotify_event) std::array<char, 16 * 1024> events;
  const ssize_t size = read(folderEvents_.get(), events.data(), events.size());
  for (const char* at = events.data(); at < events.data() + size;) {
    const auto& event = *reinterpret_cast<const inotify_event*>(at);
    at += sizeof(inotify_event) + event.len;
    if ((event.mask & IN_Q_OVERFLOW) != 0) scanFolder();
    if (event.len == 0) continue;
    if ((event.mask & (IN_CLOSE_WRITE | IN_MOVED_TO)) != 0) announcementAppeared(event.name);
    if ((event.mask & IN_MOVED_FROM) != 0) announcementWent(event.name, true);
    if ((event.mask & IN_DELETE) != 0) announcementWent(event.name, false);
  }
}

void ProcessRegistry::scanFolder() {
  std::error_code error;
  for (std::filesystem::directory_iterator file(folder_.path(), error), end; !error && file != end;
       file.increment(error)) {
    announcementAppeared(file->path().filename().native());
  }
}

void ProcessRegistry::announcementAppeared(std::string_view fileName) {
  const auto pid = pidOfAnnouncementFile(fileName);
  if (!pid || *pid == ownPid() || find(*pid) != nullptr) return;
  auto process = readAnnouncement(folder_ / fileName);
  if (!process || process->pid != *pid) return;
  Descriptor pidDescriptor = openProcess(*pid);
  if (!pidDescriptor.valid()) {
    unlink((folder_ / fileName).c_str());
    return;
  }
  if (!beganBefore(*pid, folder_ / fileName)) return;  // another process has the id by now
  add(std::move(*process), std::move(pidDescriptor));
}

std::optional<AnnouncedProcess> ProcessRegistry::readAnnouncement(
    const std::filesystem::path& file) const {
  const auto content = readPlainFile(file, kAnnouncementSizeLimit, Whose::Own);
  if (content) return parseAnnouncement(std::string(content->begin(), content->end()));
  if (errno != ENOENT && log_.enabled) {
    log_.writeLine("announcement " + file.string() + ": " + refusalText(errno) +
                   "; nobody is taken to run by it");
  }
  return {};
}

/// Whoever ends moves it away; somebody else removes that of one that is dead.
void ProcessRegistry::announcementWent(std::string_view fileName, bool moved) {
  const auto pid = pidOfAnnouncementFile(fileName);
  if (!pid || *pid == ownPid()) return;
  const bool dead = !moved && !openProcess(*pid).valid();
  remove(*pid, dead);
}

void ProcessRegistry::add(AnnouncedProcess process, Descriptor pidDescriptor) {
  const std::int32_t pid = process.pid;
  Liveness liveness{std::move(pidDescriptor), nullptr};
  if (liveness.descriptor.valid()) {
    liveness.watch = runLoop_.watch(liveness.descriptor.get(), G_IO_IN,
                                    [this, pid](GIOCondition) { processDied(pid); });
  }
  const NSRunningApplication application = applicationOf(process);
  processes_.push_back(std::move(process));
  applications_.push_back(application);
  liveness_.push_back(std::move(liveness));
  if (observing_) notify(WorkspaceNotification::DidLaunchApplication, application);
}

void ProcessRegistry::remove(std::int32_t pid, bool crashed) {
  const std::size_t index = indexOf(pid);
  if (index == kNotFound) return;
  if (crashed) crashed_.push_back(processes_[index].announcement.signature);
  const NSRunningApplication application = applications_[index];
  const auto offset = static_cast<std::ptrdiff_t>(index);
  processes_.erase(processes_.begin() + offset);
  applications_.erase(applications_.begin() + offset);
  liveness_.erase(liveness_.begin() + offset);
  if (frontPid_ == pid) frontPid_ = 0;
  notify(WorkspaceNotification::DidTerminateApplication, application);
}

void ProcessRegistry::processDied(std::int32_t pid) {
  refresh();
  unlink(announcementOf(pid).c_str());
  remove(pid, true);
}

std::size_t ProcessRegistry::indexOf(std::int32_t pid) const {
  const auto found = std::ranges::find(processes_, pid, &AnnouncedProcess::pid);
  return found == processes_.end() ? kNotFound
                                   : static_cast<std::size_t>(found - processes_.begin());
}

void ProcessRegistry::notify(WorkspaceNotification name, const NSRunningApplication& application) {
  const NSRunningApplication copy = application;
  const auto observers = observers_;
  for (const auto& entry : observers) {
    if (!entry->active || entry->name != name) continue;
    try {
      entry->call({&copy, serialNumberOf(copy.processIdentifier)});
    } catch (const std::exception& failure) {
      if (log_.enabled) log_.writeLine(std::string("an observer failed: ") + failure.what());
    }
  }
}

}  // namespace quorvane::desktop
