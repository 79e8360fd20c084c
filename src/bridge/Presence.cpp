#include "src/bridge/Presence.h"

#include "src/base/Log.h"
#include "src/base/OSVersion.h"

namespace quorvane {
namespace {

constexpr std::uint16_t kFirstWithRunningApplications = 107;

const NSRunningApplication* runningQuorvane(Instance& instance) {
  for (const auto& application : instance.platform().workspace.runningApplications()) {
    if (application.bundleIdentifier == kQuorvaneBundleIdentifier) return &application;
  }
  return nullptr;
}

}  // namespace

std::int32_t IsQUORVANEAPPRUNNING(Instance& instance) {
  if (isKnown(instance.state<PresenceState>().quorvane_psn)) return 1;
  if (Get_OS_MAC_VERSION(instance) < kFirstWithRunningApplications) return 0;
  return runningQuorvane(instance) != nullptr ? 1 : 0;
}

std::int32_t get_quorvane_pid(Instance& instance) {
  auto& pid = instance.state<PresenceState>().quorvane_pid;
  if (pid != 0) return pid;
  const NSRunningApplication* application = runningQuorvane(instance);
  if (application == nullptr) return 0;
  pid = application->processIdentifier;
  Log(instance, "* * quorvane_pid ", pid);
  return pid;
}

std::int32_t isQUORVANEAPP_FRONT(Instance& instance) {
  return get_quorvane_pid(instance) == get_frontapp_pid(instance) ? 1 : 0;
}

std::int32_t isQUORVANEFRONTAPP(Instance& instance) { return isQUORVANEAPP_FRONT(instance); }

std::int32_t get_frontapp_pid(Instance& instance) {
  return instance.state<PresenceState>().front_app_pid;
}

FourCharCode FRONTPROCESSSIGNATURE(Instance& instance) {
  auto& presence = instance.state<PresenceState>();
  if (presence.frontapp_signature != 0) return presence.frontapp_signature;
  ProcessManager& manager = instance.platform().processManager;
  if (manager.GetFrontProcess(presence.frontPSN) != noErr) return 0;
  ProcessInfoRec info;
  if (manager.GetProcessInformation(presence.frontPSN, info) != noErr) return 0;
  return info.processSignature;
}

FourCharCode GetCurrentAppSignature(Instance& instance) { return FRONTPROCESSSIGNATURE(instance); }

}  // namespace quorvane
