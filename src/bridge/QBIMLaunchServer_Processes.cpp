// Any process by its signature, the application in front, and the Pencil Menu and the server.

#include <algorithm>
#include <utility>

#include "src/base/Log.h"
#include "src/base/OSVersion.h"
#include "src/bridge/Presence.h"
#include "src/bridge/ProcessWalk.h"
#include "src/bridge/QBIMLaunchServer.h"

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

bool isOneOf(std::span<const ProcessEntry> entries, FourCharCode signature) {
  return std::any_of(entries.begin(), entries.end(),
                     [&](const ProcessEntry& entry) { return entry.signature == signature; });
}

}  // namespace

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

std::int32_t FINDAPPPROCESS(Instance& instance, ProcessSerialNumber& psn, ProcessInfoRec& info,
                            std::span<const ProcessEntry> entries) {
  ProcessManager& manager = instance.platform().processManager;
  psn = {};
  for (ProcessWalk walk(instance); walk.next(psn);) {
    Set_InfoRec_ProcessInfoRec(instance, info);
    if (manager.GetProcessInformation(psn, info) != noErr) continue;
    if (isOneOf(entries, info.processSignature)) return 1;
  }
  return 0;
}

std::int32_t Application_Running(Instance& instance, FourCharCode signature) {
  ProcessSerialNumber psn;
  ProcessInfoRec info;
  const ProcessEntry entry{kApplicationType, signature};
  return FINDAPPPROCESS(instance, psn, info, {&entry, 1});
}

std::int32_t GetQORVUISERVERPROCESS(Instance& instance) {
  ProcessSerialNumber psn;
  return Get_SPECIFIED_PROCESS(instance, kServerSignature, psn, nullptr);
}

std::int32_t isQORVAPPSIGNATURE_ALL(FourCharCode signature) {
  return signature == kQuorvaneSignature || signature == kSecondEditionSignature ? 1 : 0;
}

std::int32_t isFrontAppSame(Instance& instance) {
  auto& last = instance.state<LaunchServerState>().lastFrontSignature;
  const FourCharCode front = FRONTPROCESSSIGNATURE(instance);
  return std::exchange(last, front) == front ? 1 : 0;
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

std::int32_t Get_FrontProcessSerial(Instance& instance, ProcessSerialNumber& psn) {
  if (FRONTPROCESSSIGNATURE(instance) == 0) return 0;
  ProcessManager& manager = instance.platform().processManager;
  AEToolEventSelectStruct front;
  if (const std::int32_t pid = Get_FrontApp_AEToolEventSelectStruct(instance, front); pid != 0) {
    Log(instance, "* * frontPID ", pid);
    const OSStatus status = manager.GetProcessForPID(pid, psn);
    if (status == noErr) return 1;
    Log(instance, "ERR GetProcessForPID ", status);
  }
  return manager.GetFrontProcess(psn) == noErr ? 1 : 0;
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

std::int32_t Pencil_Menu_Application_Running(Instance& instance) {
  return Get_SPECIFIED_PROCESS(instance, kPencilMenuSignature,
                               instance.state<LaunchServerState>().PencilMenu_process, nullptr);
}

std::int32_t GetPencilMenuPROCESS(Instance& instance) {
  return instance.state<LaunchServerState>().Penc_pid != 0 ? 1 : 0;
}

}  // namespace quorvane
