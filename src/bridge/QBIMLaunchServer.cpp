#include "src/bridge/QBIMLaunchServer.h"

#include "src/bridge/Presence.h"
#include "src/bridge/qorv_sharedmem.h"

namespace quorvane {
namespace {

bool takeKnown(Instance& instance) {
  auto& state = instance.state<LaunchServerState>();
  state.Quorvaneprocess = {};
  state.qorvpid = 0;
  return get_quorvane_psn(instance, state.Quorvaneprocess, &state.qorvpid) != 0;
}

bool findBySignature(Instance& instance) {
  auto& state = instance.state<LaunchServerState>();
  return Get_SPECIFIED_PROCESS(instance, kQuorvaneSignature, state.Quorvaneprocess,
                               &state.qorvpid) != 0;
}

}  // namespace

std::int32_t get_quorvane_psn(Instance& instance, ProcessSerialNumber& out, std::int32_t* pidOut) {
  const auto& presence = instance.state<PresenceState>();
  if (!isKnown(presence.quorvane_psn)) return 0;
  out = presence.quorvane_psn;
  if (pidOut != nullptr) *pidOut = presence.quorvane_pid;
  return 1;
}

std::int32_t set_quorvane_psn(Instance& instance, const ProcessSerialNumber& psn,
                              const std::int32_t* pid) {
  auto& presence = instance.state<PresenceState>();
  presence.quorvane_psn = psn;
  if (pid != nullptr) presence.quorvane_pid = *pid;
  return 0;
}

std::int32_t Init_GetQUORVANEPROCESS(Instance& instance) {
  if (takeKnown(instance)) return 1;
  if (!findBySignature(instance)) return 0;
  const auto& state = instance.state<LaunchServerState>();
  set_quorvane_psn(instance, state.Quorvaneprocess, &state.qorvpid);
  return 1;
}

std::int32_t GetQUORVANEPROCESS(Instance& instance) {
  return takeKnown(instance) || findBySignature(instance) ? 1 : 0;
}

std::int32_t GetQORVPROCESSRUNNING(Instance& instance, ProcessSerialNumber* out) {
  ProcessSerialNumber psn;
  if (get_quorvane_psn(instance, psn, nullptr) == 0) {
    if (Init_GetQUORVANEPROCESS(instance) == 0) return 0;
    psn = instance.state<LaunchServerState>().Quorvaneprocess;
  }
  if (out != nullptr) *out = psn;
  return 1;
}

OSStatus WakeUpQuorvaneProcess(Instance& instance) {
  ProcessSerialNumber psn;
  if (get_quorvane_psn(instance, psn, nullptr) == 0) return noErr;
  return instance.platform().processManager.WakeUpProcess(psn);
}

std::uint8_t Is_QUORVANE_APP_RUNNING(Instance& instance) {
  return static_cast<std::uint8_t>(IsQUORVANEAPPRUNNING(instance));
}

void Set_Quorvane_Is_Active(Instance& instance, std::int32_t active) {
  Init_GetQUORVANEPROCESS(instance);
  instance.state<LaunchServerState>().QORVMARPP_IS_RUNNING = active;
  if (active != 0) {
    Wait_Install_DelegateOpenToolRecPtr(instance);
  } else {
    DelegateCloseToolRecPtr(instance);
  }
}

}  // namespace quorvane
