#pragma once
// The main application's window over the document: which keys are for it, and how it is cancelled.
// The window belongs to the other process, while the keys arrive here: field 26 takes each key
// over, and a tool command tells of it. Without the record there is no window.
//
//   field 31   0 no window    1 popup with numbered suggestions    any other: document window
//   field 27   0 idle         1 a clipboard restore is armed       2 to be restored
//   field 26   a key given over; what it holds afterwards is the answer, whose meaning each caller
//              knows

#include "src/base/ScreenPoint.h"
#include "src/session/QBIM_IMK_Sessions.h"

namespace quorvane {

inline constexpr std::uint32_t kNoWindow = 0;
inline constexpr std::uint32_t kPopupWindow = 1;

/// Around commands during which the run loop may turn: no second one begins meanwhile.
struct WindowKeysState {
  std::uint32_t NORECURSION = 0;     ///< command 101
  std::uint32_t NXRECURSION = 0;     ///< command 102
  std::uint32_t Block_Recusion = 0;  ///< the mouse test
};

// Keys.

/// 1: a popup used the key up.
std::int32_t RestoreClipboard(Process& process, BIMSessionRec* session, std::uint32_t modifiers,
                              std::uint8_t keyByte);
/// 1: a command key has turned an armed restore into one to be carried out.
std::int32_t Reset_Clip(Process& process, std::uint32_t modifiers);
bool HandleKeys_Popup_and_Window(Process& process, std::uint32_t windowState,
                                 std::uint32_t modifiers, std::uint8_t keyByte,
                                 std::uint32_t controlDigits);
/// Asks about the key in field 26. 1: consumed.
std::int32_t Get_Control_KeyPress(Process& process);
/// A change of modifiers. 1: a document window took it.
std::int32_t Check_InteractiveWindowKeys2(Process& process, std::uint32_t mask);
/// 1: a digit with command or option, for the document window. The second form is told the
/// modifiers instead of asking for them.
std::int32_t Check_IntractiveWindowKeys3(Process& process, std::uint8_t keyByte);
std::int32_t Check_IntractiveWindowKeys(Process& process, std::uint8_t keyByte,
                                        std::uint32_t modifiers);

// Cancelling.

/// True: a window is up, whether or not it was cancelled from here.
bool BIMCancelWindowSession(Process& process);
/// Whatever is in front. Field 31's low byte.
std::uint32_t BIMAlwaysCancelWindowSession(Process& process);
void BIMCancelandClose_WindowSession(Process& process);
/// 0: no session; 1: no window; 1028: there was one.
std::int32_t BIMCheckandClose_DocWindowSession(Process& process, std::uint64_t clientID);
/// True: the main application was asked whether the click is its window's.
bool BIMCancelMousePtWindowSession(Process& process, QDPoint point);
/// The popup by its own command, any other window by that of the document window.
void Cancel_Iteractive_Window(Process& process);
/// Ends a suspension; shows or hides the window of the front application. 1: there is one.
std::int32_t CHECK_InteractiveWindow_Cancel(Process& process);
std::uint32_t isToolRec_DocWindowOpen(Process& process);

// A click.

std::int32_t Get_MouseDown_Cancel(Process& process);
/// 1: the click lies outside the window and the menu bar. Any argument but 0: 0 at once.
std::int32_t Check_MouseDown_ForWindowCancel(Process& process, std::uint32_t unused);
/// True: the window is up and the point inside it; the rectangle is filled in then as in any case
/// where a window is up.
bool Get_InteractiveWindow_GlobalRectangle(Process& process, QDRect& rectOut, QDPoint point,
                                           std::uint32_t unused);
/// The lower and the right edge are outside.
[[nodiscard]] bool isPtInRect(QDPoint point, const QDRect& rect);

}  // namespace quorvane
