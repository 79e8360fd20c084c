#pragma once
// What the main application makes of a text that somebody goes on typing. A fix comes in two
// halves, a text in the shared record and a message for the document, and either may meet another
// text than the one that it was made for. So both are taken or neither is:
//
//     text taken over, what it took the place of kept   ->   message: does it say the same?
//                                                            yes: the document changes, too
//                                                            no:  the text is taken back
//
// A message whose text hasn't come says nothing about the session, and nothing is kept for it.

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "src/session/QBIM_IMK_SessionRecord.h"

namespace quorvane {

/// Why a fix is dropped.
enum class FixFault : std::uint8_t {
  Contradiction,  ///< the message doesn't make the new text out of the one before
  Overtaken,      ///< something was typed between text and message, or another session is active
  Doubtful,       ///< it may have been made for another text that a late answer leaves possible
  BeyondCaret,    ///< it replaces more than stands before the caret
  Unreadable,     ///< the message has no text
  Alone,          ///< its text hasn't come, or was taken back before, and it replaces something
};
inline constexpr std::size_t kFixFaults = 6;
/// In words, for a person.
std::string_view nameOf(FixFault fault);

struct SavedText {
  SessionText bytes{};
  SessionMarks beyondAscii{};
  std::uint32_t cursor = 0;
  std::uint32_t length = 0;
};

/// A text that was taken over and waits for its message.
struct TakenText {
  SessionHandle session{};
  SavedText before;
  SavedText after;
  bool read = false;     ///< the main application could read what it took the place of
  bool late = false;     ///< an earlier scan wasn't answered: the text may be for that one
  bool retyped = false;  ///< and part of what was scanned then has been taken back since
};

struct FixState {
  std::optional<TakenText> taken;
  SavedText scanned;       ///< the text of the latest scan
  bool late = false;       ///< that scan wasn't answered
  bool retyped = false;    ///< nor one before it, whose text it doesn't begin with
  bool textsCome = false;  ///< the main application has sent one
  std::array<std::uint64_t, kFixFaults> dropped{};  ///< fixes, by fault
  std::uint64_t kept = 0;                           ///< fixes
  Utf16Units lastKept{};                            ///< length of the latest
};

/// Takes in what the main application changed; a text is kept until its message comes. Null: the
/// active session.
void Check_Update_Document_Session_Buffer(Instance& instance, BIMSessionRec* session);
/// What is known to stand before the caret of the active session, as a document shows it, without a
/// word that completion holds. Of a character from U+E000 on it is only known that it is beyond
/// ASCII.
std::u16string shownBeforeCaret(Instance& instance);
/// Somebody goes on typing: a text whose message hasn't come is taken back before the key.
void takeTextBack(Instance& instance);
/// Has the text scanned and takes over what comes of it. Only inside a ToolRec.
void scanSentence(Instance& instance, BIMSessionRec& session);

/// The fault of a fix whose message has come: `text` in the place of what stands before the caret,
/// `length` long. Empty: it may go into the document.
std::optional<FixFault> faultOf(Instance& instance, const std::u16string& text, Utf16Units length);
/// It has gone there, `length` long.
void keepFix(Instance& instance, Utf16Units length);
/// It has not: its text is taken back. Where more was typed meanwhile the session begins anew.
void dropFix(Instance& instance, FixFault fault);

}  // namespace quorvane
