#include "hosts/desktop/ProcessManager.h"

#include "hosts/desktop/WakeUp.h"

#include <algorithm>

namespace quorvane::desktop {
namespace {

constexpr std::size_t kPascalStringLimit = 255;

void copyPascalString(std::uint8_t* out, const std::string& text) {
  const std::size_t length = std::min(text.size(), kPascalStringLimit);
  out[0] = static_cast<std::uint8_t>(length);
  std::copy_n(text.begin(), length, out + 1);
}

}  // namespace

OSStatus ProcessManager::GetCurrentProcess(ProcessSerialNumber& psn) {
  psn = serialNumberOf(registry_.ownPid());
  return noErr;
}

OSStatus ProcessManager::GetFrontProcess(ProcessSerialNumber& psn) {
  if (registry_.frontApplication() == 0) return procNotFound;
  psn = serialNumberOf(registry_.frontApplication());
  return noErr;
}

OSStatus ProcessManager::GetNextProcess(ProcessSerialNumber& psn) {
  const auto processes = registry_.processes();
  auto next = processes.begin();
  if (psn != ProcessSerialNumber{}) {
    const AnnouncedProcess* known = find(psn);
    next = known == nullptr ? processes.end() : processes.begin() + (known - processes.data()) + 1;
  }
  const bool atEnd = next == processes.end();
  psn = atEnd ? ProcessSerialNumber{} : serialNumberOf(next->pid);
  return atEnd ? procNotFound : noErr;
}

OSStatus ProcessManager::GetProcessInformation(const ProcessSerialNumber& psn,
                                               ProcessInfoRec& info) {
  const AnnouncedProcess* process = find(psn);
  if (process == nullptr) return procNotFound;
  if (info.processName != nullptr) copyPascalString(info.processName, process->announcement.name);
  info.processNumber = serialNumberOf(process->pid);
  info.processType = process->announcement.type;
  info.processSignature = process->announcement.signature;
  info.processMode = 0;
  return noErr;
}

OSStatus ProcessManager::GetProcessForPID(std::int32_t pid, ProcessSerialNumber& psn) {
  if (registry_.find(pid) == nullptr) return procNotFound;
  psn = serialNumberOf(pid);
  return noErr;
}

OSStatus ProcessManager::GetProcessPID(const ProcessSerialNumber& psn, std::int32_t& pid) {
  const AnnouncedProcess* process = find(psn);
  if (process == nullptr) return procNotFound;
  pid = process->pid;
  return noErr;
}

OSStatus ProcessManager::WakeUpProcess(const ProcessSerialNumber& psn) {
  const AnnouncedProcess* process = find(psn);
  if (process == nullptr) return procNotFound;
  if (process->pid != registry_.ownPid()) wakeUp(registry_.announcementOf(process->pid));
  return noErr;
}

OSStatus ProcessManager::SetFrontProcess(const ProcessSerialNumber& psn) {
  const AnnouncedProcess* process = find(psn);
  if (process == nullptr || !registry_.setFrontApplication(process->pid)) return procNotFound;
  return noErr;
}

const AnnouncedProcess* ProcessManager::find(const ProcessSerialNumber& psn) const {
  if (psn == kCurrentProcess) return registry_.find(registry_.ownPid());
  const auto pid = static_cast<std::int32_t>(psn.lowLongOfPSN);
  return psn == serialNumberOf(pid) ? registry_.find(pid) : nullptr;
}

}  // namespace quorvane::desktop
