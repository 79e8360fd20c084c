#pragma once
// A click, or a client that closes: is it the end of the main application's window?

#include <memory>

#include "src/base/Instance.h"
#include "src/base/ScreenPoint.h"
#include "src/session/QBIM_IMK_SessionRecord.h"

namespace quorvane {

struct WindowClickState {
  std::uint32_t Block_Recusion = 0;  ///< the mouse test is under way

  // Whether a click stays in its client: the one that was active before it and the one now.
  IMKTextInput* activatedsender = nullptr;      ///< the client of the last activation
  IMKTextInput* lastactivatedsender = nullptr;  ///< the same while no button was down
  IMKTextInput* temp_lastactivatedsender = nullptr;
  std::unique_ptr<Registration> QorvMouseEventLoopTimer;  ///< null: it doesn't run
  bool CallQuorvaneMouseCheckEventCompletionBusy = false;
};

/// 0: no session; 1: no window; 1028: there was one.
std::int32_t BIMCheckandClose_DocWindowSession(Instance& instance, ClientID clientID);
/// True: the main application was asked whether the click is its window's.
bool BIMCancelMousePtWindowSession(Instance& instance, QDPoint point);
std::int32_t Get_MouseDown_Cancel(Instance& instance);
/// 1: the cancelling has been set going, since the click lies outside the window and the menu bar.
/// Any argument but 0: 0 at once.
std::int32_t Check_MouseDown_ForWindowCancel(Instance& instance, std::uint32_t unused);
/// True: the window is up and the point inside it; the rectangle is filled in then as in any case
/// where a window is up.
bool Get_InteractiveWindow_GlobalRectangle(Instance& instance, QDRect& rectOut, QDPoint point,
                                           std::uint32_t unused);

/// At the next turn of the run loop, when the focus has moved or not: a click within the client
/// cancels its text and the window, one that has left it only the window.
void InstallMouseCommandEventTimer(Instance& instance);
void RemoveMouseCommandEventTimer(Instance& instance);
void CallQuorvaneMouseCheckEventCompletion(Instance& instance);
/// The lower and the right edge are outside.
[[nodiscard]] bool isPtInRect(QDPoint point, const QDRect& rect);

/// Writes a point to field 44, vertical in the high half.
void Store_mouseclick_Position_Point(Instance& instance, std::int16_t vertical,
                                     std::int16_t horizontal);

}  // namespace quorvane
