#include "hosts/memory/MemoryProcesses.h"

#include <algorithm>
#include <utility>

namespace quorvane::memory {
namespace {

constexpr OSStatus kFailed = procNotFound;

void writePascal(const std::string& text, std::uint8_t* out) {
  const std::size_t length = std::min<std::size_t>(text.size(), 255);
  out[0] = static_cast<std::uint8_t>(length);
  std::copy_n(text.begin(), length, out + 1);
}

std::string_view nameOf(WorkspaceNotification notification) {
  switch (notification) {
    case WorkspaceNotification::DidLaunchApplication:
      return "didLaunch";
    case WorkspaceNotification::DidTerminateApplication:
      return "didTerminate";
    case WorkspaceNotification::DidActivateApplication:
      break;
  }
  return "didActivate";
}

}  // namespace

class MemoryProcesses::ObserverRegistration : public Registration {
 public:
  ObserverRegistration(const std::shared_ptr<Observers>& all, std::shared_ptr<Observed> mine)
      : all_(all), mine_(std::move(mine)) {}
  ~ObserverRegistration() override {
    mine_->active = false;
    if (const auto all = all_.lock()) std::erase(*all, mine_);
  }

 private:
  std::weak_ptr<Observers> all_;
  std::shared_ptr<Observed> mine_;
};

MemoryProcesses::MemoryProcesses(Journal& journal) : journal_(journal) {
  processes_.push_back({self(), 4242, "QuorvaneInput", "QVIM"_4cc, "APPL"_4cc, 0,
                        "com.tallowmere.inputmethod.Quorvane", false});
  processes_.push_back(
      {editor(), 4243, "Writer", "WRTR"_4cc, "APPL"_4cc, 0, "com.example.writer", false});
  front_ = editor();
  refreshApplications();
}

OSStatus MemoryProcesses::GetCurrentProcess(ProcessSerialNumber& psn) {
  const std::size_t line = journal_.call("GetCurrentProcess");
  if (getCurrentProcessFails) return journal_.result(line, kFailed);
  psn = self();
  return noErr;
}

OSStatus MemoryProcesses::GetFrontProcess(ProcessSerialNumber& psn) {
  const std::size_t line = journal_.call("GetFrontProcess");
  if (getFrontProcessFails || !lookUp(front_)) return journal_.result(line, kFailed);
  psn = front_;
  return noErr;
}

OSStatus MemoryProcesses::GetNextProcess(ProcessSerialNumber& psn) {
  journal_.call("GetNextProcess ", psn);
  auto next = processes_.begin();
  if (psn != ProcessSerialNumber{}) {
    const MemoryProcess* const here = lookUp(psn);
    if (here) next += here - processes_.data() + 1;
    if (!here) next = processes_.end();
  }
  psn = next == processes_.end() ? ProcessSerialNumber{} : next->psn;
  return next == processes_.end() ? procNotFound : noErr;
}

OSStatus MemoryProcesses::GetProcessInformation(const ProcessSerialNumber& psn,
                                                ProcessInfoRec& info) {
  const std::size_t line = journal_.call("GetProcessInformation ", psn);
  const MemoryProcess* const process = lookUp(psn);
  if (!process || process->informationFails) return journal_.result(line, kFailed);
  if (info.processName) writePascal(process->name, info.processName);
  info.processNumber = process->psn;
  info.processType = process->type;
  info.processSignature = process->signature;
  info.processMode = process->mode;
  return noErr;
}

OSStatus MemoryProcesses::GetProcessForPID(std::int32_t pid, ProcessSerialNumber& psn) {
  const std::size_t line = journal_.call("GetProcessForPID ", pid);
  for (const MemoryProcess& process : processes_) {
    if (process.pid != pid) continue;
    psn = process.psn;
    return noErr;
  }
  return journal_.result(line, kFailed);
}

OSStatus MemoryProcesses::GetProcessPID(const ProcessSerialNumber& psn, std::int32_t& pid) {
  const std::size_t line = journal_.call("GetProcessPID ", psn);
  const MemoryProcess* const process = lookUp(psn);
  if (!process) return journal_.result(line, kFailed);
  pid = process->pid;
  return noErr;
}

OSStatus MemoryProcesses::WakeUpProcess(const ProcessSerialNumber& psn) {
  const std::size_t line = journal_.call("WakeUpProcess ", psn);
  if (wakeUpProcessFails || !lookUp(psn)) return journal_.result(line, kFailed);
  return noErr;
}

OSStatus MemoryProcesses::SetFrontProcess(const ProcessSerialNumber& psn) {
  const std::size_t line = journal_.call("SetFrontProcess ", psn);
  const MemoryProcess* const process = lookUp(psn);
  if (!process) return journal_.result(line, kFailed);
  setFront(process->psn);
  return noErr;
}

std::span<const NSRunningApplication> MemoryProcesses::runningApplications() {
  journal_.count();
  return applications_.back();
}

const NSRunningApplication* MemoryProcesses::frontmostApplication() {
  journal_.count();
  return activeApplication();
}

const NSRunningApplication* MemoryProcesses::menuBarOwningApplication() {
  journal_.count();
  return activeApplication();
}

bool MemoryProcesses::openURLs(const std::string& address, std::string_view bundleIdentifier,
                               std::uint32_t options) {
  journal_.call("openURLs ", address, " ", bundleIdentifier, " ", Journal::Hex{options});
  return true;
}

bool MemoryProcesses::openURL(const std::string& address) {
  journal_.call("openURL ", address);
  return true;
}

bool MemoryProcesses::launchApplication(const std::string& path) {
  const std::size_t line = journal_.call("launchApplication ", path);
  const bool launched = launch && launch(path);
  journal_.result(line, std::string_view(launched ? "YES" : "NO"));
  return launched;
}

std::unique_ptr<Registration> MemoryProcesses::addObserver(WorkspaceNotification name,
                                                           Observer observer) {
  journal_.call("addObserver ", nameOf(name));
  auto observed = std::make_shared<Observed>(Observed{name, std::move(observer)});
  observers_->push_back(observed);
  return std::make_unique<ObserverRegistration>(observers_, std::move(observed));
}

ProcessSerialNumber MemoryProcesses::add(MemoryProcess process, Notice notice) {
  const std::uint32_t serial = nextSerial_++;
  if (process.psn == ProcessSerialNumber{}) process.psn = {1, serial};
  if (process.pid == 0) process.pid = static_cast<std::int32_t>(serial);
  const ProcessSerialNumber psn = process.psn;
  processes_.push_back(std::move(process));
  changed(notice, WorkspaceNotification::DidLaunchApplication, &processes_.back());
  return psn;
}

void MemoryProcesses::remove(const ProcessSerialNumber& psn, Notice notice) {
  const MemoryProcess* const found = lookUp(psn);
  if (!found) return;
  const MemoryProcess gone = *found;
  processes_.erase(processes_.begin() + (found - processes_.data()));
  if (front_ == gone.psn) front_ = {};
  changed(notice, WorkspaceNotification::DidTerminateApplication, &gone);
}

void MemoryProcesses::setFront(const ProcessSerialNumber& psn, Notice notice) {
  front_ = psn;
  changed(notice, WorkspaceNotification::DidActivateApplication, lookUp(psn));
}

MemoryProcess* MemoryProcesses::find(const ProcessSerialNumber& psn) {
  return const_cast<MemoryProcess*>(lookUp(psn));
}

MemoryProcess* MemoryProcesses::findSignature(FourCharCode signature) {
  const auto found = std::find_if(
      processes_.begin(), processes_.end(),
      [signature](const MemoryProcess& process) { return process.signature == signature; });
  return found == processes_.end() ? nullptr : &*found;
}

void MemoryProcesses::post(WorkspaceNotification name, const ProcessSerialNumber& psn,
                           std::optional<NSRunningApplication> application) {
  queued_.push_back({name, psn, std::move(application)});
}

void MemoryProcesses::deliverNotifications() {
  if (!queued_.empty()) refreshApplications();
  for (std::size_t left = queued_.size(); left > 0 && !queued_.empty(); --left) {
    const Queued notification = std::move(queued_.front());
    queued_.pop_front();
    deliver(notification);
  }
  while (applications_.size() > 1) applications_.pop_front();
}

void MemoryProcesses::deliver(const Queued& queued) {
  const ApplicationNotification userInfo{queued.application ? &*queued.application : nullptr,
                                         queued.psn};
  const Observers observers = *observers_;
  for (const std::shared_ptr<Observed>& observed : observers) {
    if (observed->active && observed->name == queued.name) observed->observer(userInfo);
  }
}

/// Without a process (nothing is in front) there is nobody to notify about.
void MemoryProcesses::changed(Notice notice, WorkspaceNotification name,
                              const MemoryProcess* process) {
  if (notice == Notice::Missed || !process) return refreshApplications();
  post(name, process->psn, describe(*process));
}

void MemoryProcesses::refreshApplications() {
  std::vector<NSRunningApplication>& list = applications_.emplace_back();
  for (const MemoryProcess& process : processes_) list.push_back(describe(process));
}

NSRunningApplication MemoryProcesses::describe(const MemoryProcess& process) const {
  return {process.pid, process.bundleIdentifier, process.psn == front_};
}

const NSRunningApplication* MemoryProcesses::activeApplication() const {
  for (const NSRunningApplication& application : applications_.back()) {
    if (application.isActive) return &application;
  }
  return nullptr;
}

const MemoryProcess* MemoryProcesses::lookUp(const ProcessSerialNumber& psn) const {
  const ProcessSerialNumber wanted = psn == kCurrentProcess ? self() : psn;
  const auto found =
      std::find_if(processes_.begin(), processes_.end(),
                   [wanted](const MemoryProcess& process) { return process.psn == wanted; });
  return found == processes_.end() ? nullptr : &*found;
}

}  // namespace quorvane::memory
