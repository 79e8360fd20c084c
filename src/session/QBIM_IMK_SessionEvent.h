#pragma once
// The gate through which every key event goes once the controller has accepted it.

#include "src/session/QBIM_IMK_SessionRecord.h"

namespace quorvane {

/// Nonzero: the key is consumed, the application must not see it. It works on the active session:
/// `session` isn't used. A `keyByte` of 0 is read from the event.
std::int32_t BIMSessionEvent(Instance& instance, BIMSessionRec* session, EventRef event,
                             std::uint8_t keyByte);

/// Command-A drops the session's text, and the window over it, too: what is typed next
/// replaces the whole document.
void Check_Menu_Key_Interactive_Cancel(Instance& instance, BIMSessionRec* session,
                                       std::uint32_t modifiers, std::uint8_t keyByte);

}  // namespace quorvane
