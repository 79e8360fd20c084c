#pragma once

#include "hosts/desktop/ProcessRegistry.h"
#include "platform/ProcessManager.h"

namespace quorvane::desktop {

class ProcessManager final : public quorvane::ProcessManager {
 public:
  explicit ProcessManager(ProcessRegistry& registry) : registry_(registry) {}

  OSStatus GetCurrentProcess(ProcessSerialNumber& psn) override;
  OSStatus GetFrontProcess(ProcessSerialNumber& psn) override;
  OSStatus GetNextProcess(ProcessSerialNumber& psn) override;
  OSStatus GetProcessInformation(const ProcessSerialNumber& psn, ProcessInfoRec& info) override;
  OSStatus GetProcessForPID(std::int32_t pid, ProcessSerialNumber& psn) override;
  OSStatus GetProcessPID(const ProcessSerialNumber& psn, std::int32_t& pid) override;
  OSStatus WakeUpProcess(const ProcessSerialNumber& psn) override;
  OSStatus SetFrontProcess(const ProcessSerialNumber& psn) override;

 private:
  const AnnouncedProcess* find(const ProcessSerialNumber& psn) const;

  ProcessRegistry& registry_;
};

}  // namespace quorvane::desktop
