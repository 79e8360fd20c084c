#include "src/session/QBIM_IMK_WindowCancel.h"

#include "src/bridge/Presence.h"
#include "src/bridge/ToolCalls.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/session/QBIM_IMK_SessionRecord.h"
#include "src/session/QBIM_IMK_Suspension.h"

namespace quorvane {
namespace {

std::uint32_t openWindow(Instance& instance) {
  const ToolRec record(instance);
  return record.get(ToolCRecPtr_isDocWindowOpen);
}

// 0: no window, or one that belongs to nobody.
FourCharCode ownerOfWindow(Instance& instance) {
  const ToolRec record(instance);
  if (record.get(ToolCRecPtr_isDocWindowOpen) == kNoWindow) return 0;
  return record.get(ToolCRecPtr_WindowAppSignature);
}

}  // namespace

bool isWindowOfFront(Instance& instance, const ToolRec& record) {
  return record.get(ToolCRecPtr_isDocWindowOpen) != kNoWindow &&
         FRONTPROCESSSIGNATURE(instance) == record.get(ToolCRecPtr_WindowAppSignature);
}

bool BIMCancelWindowSession(Instance& instance) {
  const FourCharCode owner = ownerOfWindow(instance);
  if (owner == 0) return false;
  if (FRONTPROCESSSIGNATURE(instance) == owner) Do_BIMCancelWindowSession(instance);
  return true;
}

std::uint32_t BIMAlwaysCancelWindowSession(Instance& instance) {
  const std::uint32_t window = isToolRec_DocWindowOpen(instance);
  if (window != kNoWindow) Do_BIMCancelWindowSession(instance);
  return window;
}

void BIMCancelandClose_WindowSession(Instance& instance) {
  BIMMouseEditCancelSession(instance, BIMGetActiveSession(instance));
  BIMCancelWindowSession(instance);
}

void Cancel_Iteractive_Window(Instance& instance) {
  const std::uint32_t window = openWindow(instance);
  if (window == kNoWindow) return;
  Do_BIMCancelInteractive_WindowSession(
      instance, window == kPopupWindow ? kClosePopupCommand : kCloseWindowCommand);
}

std::int32_t CHECK_InteractiveWindow_Cancel(Instance& instance) {
  bool ours = false;
  {
    const ToolRec record(instance);
    if (!record) return 0;
    ours = isWindowOfFront(instance, record);
    if (record.get(ToolCRecPtr_SuspendTotal) != 0) endSuspension(record);
  }
  if (ours) Do_BIMShowHideWindowSession(instance);
  return ours ? 1 : 0;
}

std::uint32_t isToolRec_DocWindowOpen(Instance& instance) { return openWindow(instance) & 0xFF; }

}  // namespace quorvane
