#include "src/session/QBIM_IMK_WindowClick.h"

#include "src/bridge/Presence.h"
#include "src/bridge/ToolCalls.h"
#include "src/bridge/qorv_sharedmem_State.h"
#include "src/session/QBIM_IMK_Sessions.h"
#include "src/session/QBIM_IMK_WindowCancel.h"

namespace quorvane {
namespace {

QDPoint mouseLocation(Instance& instance) {
  Platform& platform = instance.platform();
  const CGEventRef event = platform.eventPosting.CGEventCreate(nullptr);
  const NSPoint location = platform.eventPosting.CGEventGetLocation(event.get());
  Screens& screens = platform.screens;
  const double height = screens.CGDisplayBounds(screens.CGMainDisplayID()).height;
  return {toScreenUnit(height - location.y), toScreenUnit(location.x)};
}

bool isBelowMenuBar(Instance& instance, QDPoint point) {
  std::int16_t height = 0;
  instance.platform().screens.GetThemeMenuBarHeight(height);
  return point.v > height;
}

// Vertical in the low half, unlike the points of other fields.
QDPoint cornerOf(std::uint32_t field) {
  return {static_cast<std::int16_t>(field & 0xFFFF), static_cast<std::int16_t>(field >> 16)};
}

constexpr Seconds kMouseTick{0.25};

constexpr std::int32_t kNoSession = 0;

constexpr std::int32_t kNoWindowWasUp = 1;

constexpr std::int32_t kWindowWasUp = 1028;

// The main application clears the point of a click that isn't its window's.
bool isPointCleared(Instance& instance) {
  const ToolRec record(instance);
  return record && record.get(ToolCRecPtr_MousePoint) == 0;
}

}  // namespace

std::int32_t Get_MouseDown_Cancel(Instance& instance) {
  return Check_MouseDown_ForWindowCancel(instance, 0);
}

std::int32_t Check_MouseDown_ForWindowCancel(Instance& instance, std::uint32_t unused) {
  auto& testing = instance.state<WindowClickState>().Block_Recusion;
  if (unused != 0 || testing != 0) return 0;
  const FlagGuard guard(testing);
  const QDPoint point = mouseLocation(instance);
  if (!isBelowMenuBar(instance, point) || isQUORVANEAPP_FRONT(instance) != 0) return 0;
  QDRect rect;
  if (Get_InteractiveWindow_GlobalRectangle(instance, rect, point, 0)) return 0;
  if (Is_Quorvane_AppReady(instance) == 0) return 0;
  InstallMouseCommandEventTimer(instance);
  return 1;
}

void InstallMouseCommandEventTimer(Instance& instance) {
  auto& state = instance.state<WindowClickState>();
  state.temp_lastactivatedsender = state.lastactivatedsender;
  if (state.QorvMouseEventLoopTimer) return;
  state.QorvMouseEventLoopTimer = instance.platform().runLoop.addTimer(
      Seconds{0}, kMouseTick, [&instance] { CallQuorvaneMouseCheckEventCompletion(instance); });
}

void RemoveMouseCommandEventTimer(Instance& instance) {
  instance.state<WindowClickState>().QorvMouseEventLoopTimer.reset();
}

void CallQuorvaneMouseCheckEventCompletion(Instance& instance) {
  auto& state = instance.state<WindowClickState>();
  if (state.CallQuorvaneMouseCheckEventCompletionBusy) return;
  const FlagGuard busy(state.CallQuorvaneMouseCheckEventCompletionBusy);
  IMKTextInput* const clicked = state.temp_lastactivatedsender;
  if (clicked != nullptr && clicked == state.activatedsender) {
    BIMCheckandClose_DocWindowSession(instance, identityOf(clicked));
  } else {
    BIMCancelWindowSession(instance);
  }
  RemoveMouseCommandEventTimer(instance);
}

bool Get_InteractiveWindow_GlobalRectangle(Instance& instance, QDRect& rectOut, QDPoint point,
                                           std::uint32_t /*unused*/) {
  const ToolRec record(instance);
  if (!record || record.get(ToolCRecPtr_isDocWindowOpen) == kNoWindow) return false;
  const QDPoint topLeft = cornerOf(record.get(ToolCRecPtr_WindowRectTopLeft));
  const QDPoint bottomRight = cornerOf(record.get(ToolCRecPtr_WindowRectBottomRight));
  rectOut = {topLeft.v, topLeft.h, bottomRight.v, bottomRight.h};
  return isPtInRect(point, rectOut);
}

bool isPtInRect(QDPoint point, const QDRect& rect) {
  return point.v >= rect.top && point.v < rect.bottom && point.h >= rect.left &&
         point.h < rect.right;
}

std::int32_t BIMCheckandClose_DocWindowSession(Instance& instance, ClientID clientID) {
  if (Get_SessionHandleFromID(instance, clientID) == 0) return kNoSession;
  BIMSessionRec* session = BIMGetActiveSession(instance);
  if (session == nullptr) return kNoSession;
  BIMMouseEditCancelSession(instance, session);
  return BIMCancelWindowSession(instance) ? kWindowWasUp : kNoWindowWasUp;
}

bool BIMCancelMousePtWindowSession(Instance& instance, QDPoint point) {
  {
    const ToolRec record(instance);
    const bool ours = record && isWindowOfFront(instance, record);
    Store_mouseclick_Position_Point(instance, point.v, point.h);
    if (!ours) return false;
  }
  if (Do_BIM_CallDirectQorvToolCommandAppEvent_Wait(instance, kJudgeClickCommand) != 0) return true;
  if (isPointCleared(instance)) BIMCancelandClose_WindowSession(instance);
  return true;
}

void Store_mouseclick_Position_Point(Instance& instance, std::int16_t vertical,
                                     std::int16_t horizontal) {
  if (ToolRec record(instance); record) {
    record.put(ToolCRecPtr_MousePoint, packPoint(vertical, horizontal));
  }
}

}  // namespace quorvane
