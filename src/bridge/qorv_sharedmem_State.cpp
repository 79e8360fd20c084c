#include "src/bridge/qorv_sharedmem_State.h"

#include <algorithm>

#include "src/base/Log.h"
#include "src/bridge/BIM_str.h"
#include "src/bridge/Presence.h"
#include "src/bridge/QBIMLaunchServer.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kVersion = 8;
constexpr std::uint32_t kAttachedBit = 0;
constexpr std::uint32_t kAllMenus = 0xFFFF;
constexpr FourCharCode kApplicationType = "APPL"_4cc;

bool isClient(const ProcessInfoRec& info) {
  return info.processName[0] != 0 && (info.processMode & modeOnlyBackground) == 0 &&
         info.processType == kApplicationType && info.processSignature != kQuorvaneSignature;
}

void publishClientName(Instance& instance, std::span<std::uint8_t> record) {
  std::uint8_t* published = record.subspan(ToolCRecPtr_ClientName).data();
  published[0] = 0;
  Str255 name{};
  ProcessInfoRec info;
  Set_InfoRec_ProcessInfoRec(instance, info);
  info.processName = name.data();
  const OSStatus status =
      instance.platform().processManager.GetProcessInformation(kCurrentProcess, info);
  if (status != noErr || !isClient(info)) return;
  name[0] = std::min(name[0], kClientNameLimit);
  Pstrcpy(published, name.data());
}

std::uint32_t menusToRebuild(const ToolRec& record, std::uint32_t mask) {
  return record.get(ToolCRecPtr_UpdateMenus) & mask & kAllMenus;
}

}  // namespace

std::int32_t Init_Toolversion(Instance& instance) {
  const ToolRec record(instance);
  if (!record) return 0;
  record.put(ToolCRecPtr_Version, kVersion);
  Log(instance, "IMK ToolCRecPtr_Version ", kVersion);
  if ((record.get(ToolCRecPtr_InputMethodFlags) & 1) == 0) {
    record.setBit(ToolCRecPtr_InputMethodFlags, kAttachedBit);
  }
  return 1;
}

std::int32_t IS_TOOL_BUSY(Instance& instance) {
  const ToolRec record(instance);
  if (record.get(ToolCRecPtr_unusedx2) == 0) return 0;
  Log(instance, "** TOOL_BUSY ToolCRecPtr_unusedx2 IMK");
  return 1;
}

std::uint32_t Get_ToolCRecPtr_unusedx2(Instance& instance) {
  const ToolRec record(instance);
  if (!record) return 0;
  const std::uint32_t value = record.get(ToolCRecPtr_unusedx2);
  instance.platform().console.print(value != 0 ? "IMK get ToolCRecPtr_unusedx2 set\n"
                                               : "IMK get ToolCRecPtr_unusedx2 clear\n");
  return value;
}

void Set_ToolCRecPtr_unusedx2(Instance& instance, std::uint32_t value) {
  const ToolRec record(instance);
  if (!record) return;
  record.put(ToolCRecPtr_unusedx2, value);
  instance.platform().console.print(value != 0 ? "IMK set ToolCRecPtr_unusedx2 set\n"
                                               : "IMK set ToolCRecPtr_unusedx2 clear\n");
}

void Set_ToolCRecPtr_unusedx1(Instance& instance, std::uint32_t value) {
  const ToolRec record(instance);
  record.put(ToolCRecPtr_unusedx1, value);
}

std::int32_t IS_MACHPORT_BUSY(Instance& instance) {
  const ToolRec record(instance);
  return record.get(ToolCRecPtr_MachPortBusy) != 0 ? 1 : 0;
}

void SET_MACHPORT_BUSY(Instance& instance, std::uint32_t value) {
  const ToolRec record(instance);
  record.put(ToolCRecPtr_MachPortBusy, value);
}

std::int32_t Get_InputMethod_UpdateMenus(Instance& instance, std::uint32_t mask) {
  const ToolRec record(instance);
  const std::uint32_t menus = record.get(ToolCRecPtr_UpdateMenus);
  if (menusToRebuild(record, mask) == 0) return 0;
  record.put(ToolCRecPtr_UpdateMenus, menus & ~(mask & kAllMenus));
  return 1;
}

std::int32_t Get_IMK_updateMenus(Instance& instance, std::uint32_t mask) {
  const ToolRec record(instance);
  return menusToRebuild(record, mask) != 0 ? 1 : 0;
}

std::int32_t Is_Quorvane_AppReady(Instance& instance) {
  const ToolRec record(instance);
  return record.get(ToolCRecPtr_AppReady) != 0 ? 1 : 0;
}

void Wake_PHP_SharedMemProcess(Instance& instance) {
  const ToolRec record(instance);
  if (record && record.bytes()[ToolCRecPtr_WakeFlag] != 0) {
    WakeUpQuorvaneProcess(instance);
  }
}

std::uint32_t CheckCurrentCheckStatus(Instance& instance, bool update) {
  const ToolRec record(instance);
  if (!record) return 0;
  const std::uint32_t running = record.get(ToolCRecPtr_CheckRunning);
  if (running == 0 && update) publishClientName(instance, record.bytes());
  return running;
}

FourCharCode GetCurrentFrontApplication(const ToolRec& record) {
  return record.get(ToolCRecPtr_WindowAppSignature);
}

std::int32_t is_this_Quorvane(Instance& instance) {
  ProcessInfoRec info;
  Set_InfoRec_ProcessInfoRec(instance, info);
  const OSStatus status =
      instance.platform().processManager.GetProcessInformation(kCurrentProcess, info);
  return status == noErr && info.processSignature == kQuorvaneSignature ? 1 : 0;
}

}  // namespace quorvane
