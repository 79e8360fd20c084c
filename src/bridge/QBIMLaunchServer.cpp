#include "src/bridge/QBIMLaunchServer.h"

#include <algorithm>

#include "src/base/Log.h"
#include "src/base/OSVersion.h"
#include "src/bridge/Presence.h"
#include "src/bridge/ProcessWalk.h"
#include "src/bridge/QBIMMessageSend.h"
#include "src/bridge/qorv_sharedmem.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kProcessInfoLength = 72;
constexpr std::uint16_t kFirstWithMenuBarOwner = 107;
constexpr std::uint16_t kFirstWithFrontmostApplication = 107;
constexpr std::size_t kLongestIdentifier = 63;
constexpr ProcessSerialNumber kNoProcess{};

std::int32_t idOf(const NSRunningApplication* application) {
  return application == nullptr ? 0 : application->processIdentifier;
}

std::int32_t activeApplicationID(Instance& instance) {
  const auto running = instance.platform().workspace.runningApplications();
  const auto active = std::find_if(running.begin(), running.end(),
                                   [](const auto& application) { return application.isActive; });
  return active == running.end() ? 0 : active->processIdentifier;
}

bool isKnownProcess(Instance& instance, const NSRunningApplication& application) {
  ProcessManager& manager = instance.platform().processManager;
  ProcessSerialNumber psn;
  const OSStatus status = manager.GetProcessForPID(application.processIdentifier, psn);
  if (status != noErr) Log(instance, "ERR GetProcessForPID ", status);
  ProcessInfoRec info;
  Set_InfoRec_ProcessInfoRec(instance, info);
  return status == noErr && manager.GetProcessInformation(psn, info) == noErr;
}

/// The one in front or, where the system can't tell or it has no identifier, the first active one
/// that the Process Manager knows.
const NSRunningApplication* frontWithIdentifier(Instance& instance) {
  Workspace& workspace = instance.platform().workspace;
  if (Get_OS_MAC_VERSION(instance) >= kFirstWithFrontmostApplication) {
    const NSRunningApplication* const front = workspace.frontmostApplication();
    if (front != nullptr && !front->bundleIdentifier.empty()) return front;
  }
  for (const auto& application : workspace.runningApplications()) {
    if (application.isActive && isKnownProcess(instance, application)) return &application;
  }
  return nullptr;
}

bool hasSignature(Instance& instance, FourCharCode signature, const ProcessSerialNumber& psn) {
  ProcessInfoRec info;
  Set_InfoRec_ProcessInfoRec(instance, info);
  return instance.platform().processManager.GetProcessInformation(psn, info) == noErr &&
         info.processSignature == signature;
}

bool takeKnown(Instance& instance) {
  auto& state = instance.state<LaunchServerState>();
  state.Quorvaneprocess = kNoProcess;
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

std::int32_t Get_SPECIFIED_PROCESS(Instance& instance, FourCharCode signature,
                                   ProcessSerialNumber& psnInOut, std::int32_t* pidOut) {
  if (Check_appsignature(instance, signature, psnInOut) != 0) return 1;
  if (psnInOut != kNoProcess) {
    psnInOut = kNoProcess;
    if (pidOut != nullptr) *pidOut = 0;
  }
  ProcessSerialNumber psn;
  for (ProcessWalk walk(instance); walk.next(psn);) {
    if (!hasSignature(instance, signature, psn)) continue;
    psnInOut = psn;
    if (pidOut != nullptr) instance.platform().processManager.GetProcessPID(psn, *pidOut);
    return 1;
  }
  return 0;
}

std::int32_t Check_appsignature(Instance& instance, FourCharCode signature,
                                const ProcessSerialNumber& psn) {
  return psn != kNoProcess && hasSignature(instance, signature, psn) ? 1 : 0;
}

void Set_InfoRec_ProcessInfoRec(Instance& /*process*/, ProcessInfoRec& info) {
  info.processInfoLength = kProcessInfoLength;
  info.processName = nullptr;
}

std::int32_t Get_FrontApp_AEToolEventSelectStruct(Instance& instance,
                                                  AEToolEventSelectStruct& record) {
  const bool ownsMenuBar = Get_OS_MAC_VERSION(instance) >= kFirstWithMenuBarOwner;
  const std::int32_t pid = ownsMenuBar
                               ? idOf(instance.platform().workspace.menuBarOwningApplication())
                               : activeApplicationID(instance);
  record.frontProcessID = static_cast<std::uint32_t>(pid);
  return pid;
}

void Get_FRONT_bundleIdentifier(Instance& instance, std::span<std::uint8_t> out) {
  std::ranges::fill(out, std::uint8_t{0});
  const NSRunningApplication* const front = frontWithIdentifier(instance);
  if (front == nullptr || out.empty()) return;
  const std::string_view text = front->bundleIdentifier;
  std::ranges::copy(text.substr(0, std::min(kLongestIdentifier, out.size() - 1)), out.begin());
}

std::int32_t isPencilMenuRunning(Instance& instance) {
  const auto running = instance.platform().workspace.runningApplications();
  return std::any_of(running.begin(), running.end(),
                     [](const auto& application) {
                       return application.bundleIdentifier == kPencilMenuBundleIdentifier;
                     })
             ? 1
             : 0;
}

std::int32_t QuitQuorvaneMenulet(Instance& instance) {
  return isPencilMenuRunning(instance) != 0 ? BIMQuitMenulet(instance) : 0;
}

}  // namespace quorvane
