#include "src/bridge/Presence.h"

#include "src/base/Log.h"
#include "src/base/OSVersion.h"

namespace quorvane {
namespace {

constexpr std::uint16_t kFirstWithRunningApplications = 107;

const NSRunningApplication* runningQuorvane(Process& process) {
  for (const auto& application : process.platform().workspace.runningApplications()) {
    if (application.bundleIdentifier == kQuorvaneBundleIdentifier) return &application;
  }
  return nullptr;
}

}  // namespace

std::int32_t IsQUORVANEAPPRUNNING(Process& process) {
  if (isKnown(process.state<PresenceState>().quorvane_psn)) return 1;
  if (Get_OS_MAC_VERSION(process) < kFirstWithRunningApplications) return 0;
  return runningQuorvane(process) != nullptr ? 1 : 0;
}

std::int32_t get_quorvane_pid(Process& process) {
  auto& pid = process.state<PresenceState>().quorvane_pid;
  if (pid != 0) return pid;
  const NSRunningApplication* application = runningQuorvane(process);
  if (application == nullptr) return 0;
  pid = application->processIdentifier;
  Log(process, "* * quorvane_pid ", pid);
  return pid;
}

std::int32_t isQUORVANEAPP_FRONT(Process& process) {
  return get_quorvane_pid(process) == get_frontapp_pid(process) ? 1 : 0;
}

std::int32_t isQUORVANEFRONTAPP(Process& process) { return isQUORVANEAPP_FRONT(process); }

std::int32_t get_frontapp_pid(Process& process) {
  return process.state<PresenceState>().front_app_pid;
}

FourCharCode FRONTPROCESSSIGNATURE(Process& process) {
  auto& presence = process.state<PresenceState>();
  if (presence.frontapp_signature != 0) return presence.frontapp_signature;
  ProcessManager& manager = process.platform().processManager;
  if (manager.GetFrontProcess(presence.frontPSN) != noErr) return 0;
  ProcessInfoRec info;
  if (manager.GetProcessInformation(presence.frontPSN, info) != noErr) return 0;
  return info.processSignature;
}

FourCharCode GetCurrentAppSignature(Process& process) { return FRONTPROCESSSIGNATURE(process); }

}  // namespace quorvane
