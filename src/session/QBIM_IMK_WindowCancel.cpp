#include "src/session/QBIM_IMK_WindowCancel.h"

#include "src/bridge/Presence.h"
#include "src/bridge/ToolCalls.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/session/QBIM_IMK_SessionRecord.h"
#include "src/session/QBIM_IMK_Suspension.h"

namespace quorvane {
namespace {

std::uint32_t openWindow(Process& process) {
  const ToolRec record(process);
  return record.get(ToolCRecPtr_isDocWindowOpen);
}

// 0: no window, or one that belongs to nobody.
FourCharCode ownerOfWindow(Process& process) {
  const ToolRec record(process);
  if (record.get(ToolCRecPtr_isDocWindowOpen) == kNoWindow) return 0;
  return record.get(ToolCRecPtr_WindowAppSignature);
}

}  // namespace

bool isWindowOfFront(Process& process, const ToolRec& record) {
  return record.get(ToolCRecPtr_isDocWindowOpen) != kNoWindow &&
         FRONTPROCESSSIGNATURE(process) == record.get(ToolCRecPtr_WindowAppSignature);
}

bool BIMCancelWindowSession(Process& process) {
  const FourCharCode owner = ownerOfWindow(process);
  if (owner == 0) return false;
  if (FRONTPROCESSSIGNATURE(process) == owner) Do_BIMCancelWindowSession(process);
  return true;
}

std::uint32_t BIMAlwaysCancelWindowSession(Process& process) {
  const std::uint32_t window = isToolRec_DocWindowOpen(process);
  if (window != kNoWindow) Do_BIMCancelWindowSession(process);
  return window;
}

void BIMCancelandClose_WindowSession(Process& process) {
  BIMMouseEditCancelSession(process, BIMGetActiveSession(process));
  BIMCancelWindowSession(process);
}

void Cancel_Iteractive_Window(Process& process) {
  const std::uint32_t window = openWindow(process);
  if (window == kNoWindow) return;
  Do_BIMCancelInteractive_WindowSession(
      process, window == kPopupWindow ? kClosePopupCommand : kCloseWindowCommand);
}

std::int32_t CHECK_InteractiveWindow_Cancel(Process& process) {
  bool ours = false;
  {
    const ToolRec record(process);
    if (!record) return 0;
    ours = isWindowOfFront(process, record);
    if (record.get(ToolCRecPtr_SuspendTotal) != 0) endSuspension(record);
  }
  if (ours) Do_BIMShowHideWindowSession(process);
  return ours ? 1 : 0;
}

std::uint32_t isToolRec_DocWindowOpen(Process& process) { return openWindow(process) & 0xFF; }

}  // namespace quorvane
