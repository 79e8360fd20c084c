#pragma once
// The gate through which every key event goes once the controller has accepted it.

#include "src/session/QBIM_IMK_Sessions.h"

namespace quorvane {

struct SessionEventState {
  double LastTimeStampWhenKeyHit = 0;  ///< seconds
  bool SeparateKeyPress = false;       ///< this key came more than 0.5 s after the previous one
};

/// Nonzero: the key is consumed, the application must not see it. It works on the active session:
/// `session` isn't used. A `keyByte` of 0 is read from the event.
std::int32_t BIMSessionEvent(Process& process, BIMSessionRec* session, EventRef event,
                             std::uint8_t keyByte);

/// Writes a point to field 44, vertical in the high half.
void Store_mouseclick_Position_Point(Process& process, std::int16_t vertical,
                                     std::int16_t horizontal);

/// Command-A drops the session's text, and the checker's window with it: what is typed next
/// replaces the whole document.
void Check_Menu_Key_Interactive_Cancel(Process& process, BIMSessionRec* session,
                                       std::uint32_t modifiers, std::uint8_t keyByte);

}  // namespace quorvane
