// The ways in which the checker's window is closed, shown or hidden from here.

#include "src/bridge/Presence.h"
#include "src/bridge/ToolCalls.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/session/QBIM_IMK_Interactive.h"
#include "src/session/QBIM_IMK_SessionEvent.h"
#include "src/session/QBIM_IMK_Windows.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kCloseDocumentWindow = 104;
constexpr std::uint32_t kClosePopup = 105;
constexpr std::uint32_t kJudgeClick = 108;

constexpr std::int32_t kNoSession = 0;
constexpr std::int32_t kNoWindowWasUp = 1;
constexpr std::int32_t kWindowWasUp = 1028;

std::uint32_t openWindow(Process& process) {
  const ToolRec record(process);
  return GET_TOOLCRECPTR(process, ToolCRecPtr_isDocWindowOpen);
}

// 0: no window, or one that belongs to nobody.
FourCharCode ownerOfWindow(Process& process) {
  const ToolRec record(process);
  if (GET_TOOLCRECPTR(process, ToolCRecPtr_isDocWindowOpen) == kNoWindow) return 0;
  return GET_TOOLCRECPTR(process, ToolCRecPtr_WindowAppSignature);
}

// Only inside a ToolRec. As the fields stand: nobody's window is that of a front application
// without a signature.
bool isWindowOfFront(Process& process) {
  return GET_TOOLCRECPTR(process, ToolCRecPtr_isDocWindowOpen) != kNoWindow &&
         FRONTPROCESSSIGNATURE(process) == GET_TOOLCRECPTR(process, ToolCRecPtr_WindowAppSignature);
}

// The main application clears the point of a click that isn't its window's.
bool isPointCleared(Process& process) {
  const ToolRec record(process);
  return record && GET_TOOLCRECPTR(process, ToolCRecPtr_MousePoint) == 0;
}

}  // namespace

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

std::int32_t BIMCheckandClose_DocWindowSession(Process& process, std::uint64_t clientID) {
  if (Get_SessionHandleFromID(process, clientID) == 0) return kNoSession;
  BIMSessionRec* session = BIMGetActiveSession(process);
  if (session == nullptr) return kNoSession;
  BIMMouseEditCancelSession(process, session);
  return BIMCancelWindowSession(process) ? kWindowWasUp : kNoWindowWasUp;
}

bool BIMCancelMousePtWindowSession(Process& process, QDPoint point) {
  {
    const ToolRec record(process);
    const bool ours = record && isWindowOfFront(process);
    Store_mouseclick_Position_Point(process, point.v, point.h);
    if (!ours) return false;
  }
  if (Do_BIM_CallDirectQorvToolCommandAppEvent_Wait(process, kJudgeClick) != 0) return true;
  if (isPointCleared(process)) BIMCancelandClose_WindowSession(process);
  return true;
}

void Cancel_Iteractive_Window(Process& process) {
  const std::uint32_t window = openWindow(process);
  if (window == kNoWindow) return;
  Do_BIMCancelInteractive_WindowSession(
      process, window == kPopupWindow ? kClosePopup : kCloseDocumentWindow);
}

std::int32_t CHECK_InteractiveWindow_Cancel(Process& process) {
  bool ours = false;
  {
    const ToolRec record(process);
    if (!record) return 0;
    ours = isWindowOfFront(process);
    if (GET_TOOLCRECPTR(process, ToolCRecPtr_SuspendTotal) != 0) endSuspension(process);
  }
  if (ours) Do_BIMShowHideWindowSession(process);
  return ours ? 1 : 0;
}

std::uint32_t isToolRec_DocWindowOpen(Process& process) { return openWindow(process) & 0xFF; }

}  // namespace quorvane
