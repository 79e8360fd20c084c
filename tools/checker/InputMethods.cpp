#include "tools/checker/InputMethods.h"

#include <sys/shm.h>

#include <algorithm>

namespace quorvane::checker {

namespace {

constexpr std::string_view kBundle = "com.tallowmere.inputmethod.Quorvane";
constexpr std::string_view kPortNameBase = "Q7T2M4K9W1.com.tallowmere.QorvInPortServer";

}  // namespace

std::vector<std::int32_t> runningInputMethods(const desktop::ProcessRegistry& registry) {
  std::vector<std::int32_t> pids;
  for (const auto& process : registry.processes()) {
    if (process.announcement.bundleIdentifier == kBundle) pids.push_back(process.pid);
  }
  return pids;
}

std::string inputMethodPortName(const ProcessSerialNumber& serialNumber) {
  return std::string(kPortNameBase) + std::to_string(serialNumber.highLongOfPSN) +
         std::to_string(serialNumber.lowLongOfPSN);
}

std::int32_t DesktopInputMethodPort::asker() const {
  const auto running = runningInputMethods(registry_);
  shmid_ds segment{};
  if (::shmctl(textSegment_, IPC_STAT, &segment) == 0 &&
      std::ranges::find(running, segment.shm_lpid) != running.end()) {
    return segment.shm_lpid;
  }
  return running.size() == 1 ? running.front() : 0;
}

bool DesktopInputMethodPort::find() {
  remote_.reset();
  registry_.refresh();  // whoever has just announced himself types at once
  const std::int32_t pid = asker();
  if (pid == 0) return false;
  name_ = inputMethodPortName(desktop::serialNumberOf(pid));
  remote_ = ports_.CFMessagePortCreateRemote(name_);
  return remote_ != nullptr;
}

std::int32_t DesktopInputMethodPort::processOf(std::uint32_t signature) const {
  const auto processes = registry_.processes();
  const auto found = std::ranges::find_if(processes, [signature](const auto& process) {
    return process.announcement.signature == signature;
  });
  return found == processes.end() ? 0 : found->pid;
}

bool DesktopInputMethodPort::send(std::int32_t messageId, std::span<const std::uint8_t> payload) {
  return remote_ != nullptr &&
         ports_.CFMessagePortSendRequest(*remote_, messageId, payload, Seconds(0), Seconds(0),
                                         nullptr) == kCFMessagePortSuccess;
}

}  // namespace quorvane::checker
