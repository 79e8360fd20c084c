#pragma once
// The event route: keys pressed in the front application by this program, down and up, with their
// modifiers as flags on the event. No status of a post is looked at.

#include <cstdint>

#include "src/base/Instance.h"

namespace quorvane {

struct BIMSessionRec;

struct EventPostingState {
  std::uint32_t CommandKeyCount = 0;  ///< command keys posted since the last sequence ended
};

/// The flags of a classic modifier word.
[[nodiscard]] std::uint64_t eventFlags(std::uint16_t modifierWord);
/// Without any, the event keeps those it was made with. `event` may be null.
void setEventFlags(EventPosting& posting, CGEvent* event, std::uint16_t modifierWord);

/// One event, with the device's own events held back meanwhile. `source` isn't used.
void Do_POST_CGEVENT(Instance& instance, CGEventSource* source, const ProcessSerialNumber& psn,
                     std::uint16_t keyCode, std::uint16_t modifierWord, std::uint32_t keyDown);
/// Key down and key up to the front process.
void Do_FULL_POST_CGEVENT(Instance& instance, std::uint16_t keyCode, std::uint16_t modifierWord);
/// Types the character. 0: nothing happens, and the modifier word comes back.
std::int32_t Post_KeyEvent(Instance& instance, std::uint16_t modifierWord, std::uint16_t character);
std::int32_t Post_Key_Event(Instance& instance, std::uint16_t character);
/// A command-key chord for the front process.
void PostCommandKey(Instance& instance, std::uint16_t character);
/// Types the character with the modifiers that the layout asks for. 1; 0, and nothing is posted,
/// where no key yields it or nothing is in front. The session isn't used.
std::int32_t DO_FIX_CHAR(Instance& instance, BIMSessionRec* session, std::uint16_t character);
/// Types it as text, with a key down alone. 1. The session isn't used.
std::int32_t DO_FIX_CHAR_NO_MODIFIERS(Instance& instance, BIMSessionRec* session,
                                      std::uint16_t character);
void Wake_up_front(Instance& instance);
/// Nothing: modifiers are flags on the event.
std::int32_t MyPostModifierKeys(std::uint16_t modifierWord, std::uint32_t press);
void Send_Marker_Key();

/// Has the window server see the command key before a menu command. The command isn't used.
void do_PREP_QorvMain_Do_Menu_Tool_CommandID(Instance& instance, std::uint32_t commandID);

std::int32_t IsKeyDown(Instance& instance, std::uint16_t keyCode);
std::int32_t IsShiftKeyDown(Instance& instance);
/// Moves nothing: the system sees a mouse move.
void Post_MouseMovedEvent(Instance& instance);

}  // namespace quorvane
