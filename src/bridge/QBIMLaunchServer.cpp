#include "src/bridge/QBIMLaunchServer.h"

#include <algorithm>

#include "src/base/OSVersion.h"
#include "src/bridge/Presence.h"
#include "src/bridge/ProcessWalk.h"
#include "src/bridge/QBIMMessageSend.h"
#include "src/bridge/qorv_sharedmem.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kProcessInfoLength = 72;
constexpr std::uint16_t kFirstWithMenuBarOwner = 107;
constexpr ProcessSerialNumber kNoProcess{};

std::int32_t idOf(const NSRunningApplication* application) {
  return application == nullptr ? 0 : application->processIdentifier;
}

std::int32_t activeApplicationID(Process& process) {
  const auto running = process.platform().workspace.runningApplications();
  const auto active = std::find_if(running.begin(), running.end(),
                                   [](const auto& application) { return application.isActive; });
  return active == running.end() ? 0 : active->processIdentifier;
}

bool hasSignature(Process& process, FourCharCode signature, const ProcessSerialNumber& psn) {
  ProcessInfoRec info;
  Set_InfoRec_ProcessInfoRec(process, info);
  return process.platform().processManager.GetProcessInformation(psn, info) == noErr &&
         info.processSignature == signature;
}

bool takeKnown(Process& process) {
  auto& state = process.state<LaunchServerState>();
  state.Quorvaneprocess = kNoProcess;
  state.qorvpid = 0;
  return get_quorvane_psn(process, state.Quorvaneprocess, &state.qorvpid) != 0;
}

bool findBySignature(Process& process) {
  auto& state = process.state<LaunchServerState>();
  return Get_SPECIFIED_PROCESS(process, kQuorvaneSignature, state.Quorvaneprocess,
                               &state.qorvpid) != 0;
}

}  // namespace

std::int32_t get_quorvane_psn(Process& process, ProcessSerialNumber& out, std::int32_t* pidOut) {
  const auto& presence = process.state<PresenceState>();
  if (!isKnown(presence.quorvane_psn)) return 0;
  out = presence.quorvane_psn;
  if (pidOut != nullptr) *pidOut = presence.quorvane_pid;
  return 1;
}

std::int32_t set_quorvane_psn(Process& process, const ProcessSerialNumber& psn,
                              const std::int32_t* pid) {
  auto& presence = process.state<PresenceState>();
  presence.quorvane_psn = psn;
  if (pid != nullptr) presence.quorvane_pid = *pid;
  return 0;
}

std::int32_t Init_GetQUORVANEPROCESS(Process& process) {
  if (takeKnown(process)) return 1;
  if (!findBySignature(process)) return 0;
  const auto& state = process.state<LaunchServerState>();
  set_quorvane_psn(process, state.Quorvaneprocess, &state.qorvpid);
  return 1;
}

std::int32_t GetQUORVANEPROCESS(Process& process) {
  return takeKnown(process) || findBySignature(process) ? 1 : 0;
}

std::int32_t GetQORVPROCESSRUNNING(Process& process, ProcessSerialNumber* out) {
  ProcessSerialNumber psn;
  if (get_quorvane_psn(process, psn, nullptr) == 0) {
    if (Init_GetQUORVANEPROCESS(process) == 0) return 0;
    psn = process.state<LaunchServerState>().Quorvaneprocess;
  }
  if (out != nullptr) *out = psn;
  return 1;
}

OSStatus WakeUpQuorvaneProcess(Process& process) {
  ProcessSerialNumber psn;
  if (get_quorvane_psn(process, psn, nullptr) == 0) return noErr;
  return process.platform().processManager.WakeUpProcess(psn);
}

std::uint8_t Is_QUORVANE_APP_RUNNING(Process& process) {
  return static_cast<std::uint8_t>(IsQUORVANEAPPRUNNING(process));
}

void Set_Quorvane_Is_Active(Process& process, std::int32_t active) {
  Init_GetQUORVANEPROCESS(process);
  process.state<LaunchServerState>().QORVMARPP_IS_RUNNING = active;
  if (active != 0) {
    Wait_Install_DelegateOpenToolRecPtr(process);
  } else {
    DelegateCloseToolRecPtr(process);
  }
}

std::int32_t Get_SPECIFIED_PROCESS(Process& process, FourCharCode signature,
                                   ProcessSerialNumber& psnInOut, std::int32_t* pidOut) {
  if (Check_appsignature(process, signature, psnInOut) != 0) return 1;
  if (psnInOut != kNoProcess) {
    psnInOut = kNoProcess;
    if (pidOut != nullptr) *pidOut = 0;
  }
  ProcessSerialNumber psn;
  for (ProcessWalk walk(process); walk.next(psn);) {
    if (!hasSignature(process, signature, psn)) continue;
    psnInOut = psn;
    if (pidOut != nullptr) process.platform().processManager.GetProcessPID(psn, *pidOut);
    return 1;
  }
  return 0;
}

std::int32_t Check_appsignature(Process& process, FourCharCode signature,
                                const ProcessSerialNumber& psn) {
  return psn != kNoProcess && hasSignature(process, signature, psn) ? 1 : 0;
}

void Set_InfoRec_ProcessInfoRec(Process& /*process*/, ProcessInfoRec& info) {
  info.processInfoLength = kProcessInfoLength;
  info.processName = nullptr;
}

std::int32_t Get_FrontApp_AEToolEventSelectStruct(Process& process,
                                                  AEToolEventSelectStruct& record) {
  const bool ownsMenuBar = Get_OS_MAC_VERSION(process) >= kFirstWithMenuBarOwner;
  const std::int32_t pid = ownsMenuBar
                               ? idOf(process.platform().workspace.menuBarOwningApplication())
                               : activeApplicationID(process);
  record.frontProcessID = static_cast<std::uint32_t>(pid);
  return pid;
}

std::int32_t isPencilMenuRunning(Process& process) {
  const auto running = process.platform().workspace.runningApplications();
  return std::any_of(running.begin(), running.end(),
                     [](const auto& application) {
                       return application.bundleIdentifier == kPencilMenuBundleIdentifier;
                     })
             ? 1
             : 0;
}

std::int32_t QuitQuorvaneMenulet(Process& process) {
  return isPencilMenuRunning(process) != 0 ? BIMQuitMenulet(process) : 0;
}

}  // namespace quorvane
