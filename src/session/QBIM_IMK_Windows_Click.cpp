// A click in the front application: is it one that ends the checker's window?

#include "src/bridge/Presence.h"
#include "src/bridge/qorv_sharedmem_State.h"
#include "src/session/QBIM_IMK_Windows.h"

namespace quorvane {
namespace {

QDPoint mouseLocation(Process& process) {
  Platform& platform = process.platform();
  const CGEventRef event = platform.eventPosting.CGEventCreate(nullptr);
  const NSPoint location = platform.eventPosting.CGEventGetLocation(event.get());
  Screens& screens = platform.screens;
  const double height = screens.CGDisplayBounds(screens.CGMainDisplayID()).height;
  return {toScreenUnit(height - location.y), toScreenUnit(location.x)};
}

bool isBelowMenuBar(Process& process, QDPoint point) {
  std::int16_t height = 0;
  process.platform().screens.GetThemeMenuBarHeight(height);
  return point.v > height;
}

// Vertical in the low half, unlike the points of other fields.
QDPoint cornerOf(std::uint32_t field) {
  return {static_cast<std::int16_t>(field & 0xFFFF), static_cast<std::int16_t>(field >> 16)};
}

}  // namespace

std::int32_t Get_MouseDown_Cancel(Process& process) {
  return Check_MouseDown_ForWindowCancel(process, 0);
}

std::int32_t Check_MouseDown_ForWindowCancel(Process& process, std::uint32_t unused) {
  auto& testing = process.state<WindowKeysState>().Block_Recusion;
  if (unused != 0 || testing != 0) return 0;
  const FlagGuard guard(testing);
  const QDPoint point = mouseLocation(process);
  if (!isBelowMenuBar(process, point) || isQUORVANEAPP_FRONT(process) != 0) return 0;
  QDRect rect;
  if (Get_InteractiveWindow_GlobalRectangle(process, rect, point, 0)) return 0;
  return Is_Quorvane_AppReady(process);
}

bool Get_InteractiveWindow_GlobalRectangle(Process& process, QDRect& rectOut, QDPoint point,
                                           std::uint32_t /*unused*/) {
  const ToolRec record(process);
  if (!record || GET_TOOLCRECPTR(process, ToolCRecPtr_isDocWindowOpen) == kNoWindow) return false;
  const QDPoint topLeft = cornerOf(GET_TOOLCRECPTR(process, ToolCRecPtr_WindowRectTopLeft));
  const QDPoint bottomRight = cornerOf(GET_TOOLCRECPTR(process, ToolCRecPtr_WindowRectBottomRight));
  rectOut = {topLeft.v, topLeft.h, bottomRight.v, bottomRight.h};
  return isPtInRect(point, rectOut);
}

bool isPtInRect(QDPoint point, const QDRect& rect) {
  return point.v >= rect.top && point.v < rect.bottom && point.h >= rect.left &&
         point.h < rect.right;
}

}  // namespace quorvane
