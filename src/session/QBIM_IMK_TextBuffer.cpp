#include "src/session/QBIM_IMK_TextBuffer.h"

#include <algorithm>

#include "src/base/KeyBytes.h"
#include "src/session/CharacterPolicy.h"
#include "src/session/QBIM_IMK_CaretMoves.h"
#include "src/session/QBIM_IMK_Interactive.h"
#include "src/session/QBIM_IMK_Sessions.h"
#include "src/session/QBIM_IMK_WindowCancel.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kSentenceLimit = 320;  // from here a sentence end resets the buffer
constexpr std::uint32_t kWordLimit = 368;      // from here any white space does
constexpr std::uint32_t kHardLimit = kSessionTextSize;
constexpr std::uint32_t kTailMargin = 32;

// The byte `distance` before the cursor; 0, which matches nothing, before the buffer's start.
std::uint8_t byteBefore(const BIMSessionRec& session, std::uint32_t distance) {
  return session.cursor < distance ? 0 : (*session.sessionText)[session.cursor - distance];
}

bool isWhiteSpace(std::uint8_t byte) {
  return byte == ' ' || byte == kReturnKey || byte == kTabKey;
}

bool endsSentence(std::uint8_t byte) {
  return byte == '.' || byte == '?' || byte == '!' || byte == kReturnKey;
}

void startAfresh(BIMSessionRec& session) {
  session.cursor = 0;
  session.length = 0;
}

void dropAtWhiteSpace(BIMSessionRec& session) {
  if (endsSentence(byteBefore(session, 2))) {
    startAfresh(session);
  } else if (session.length >= kWordLimit) {
    session.editState = kEditOverflow;
    startAfresh(session);
  }
}

void dropInsideWord(Instance& instance, BIMSessionRec& session) {
  if (session.length > session.cursor + kTailMargin) {
    session.length = session.cursor;
  } else {
    BIM_CancelSessionTextBuffer(instance, &session);
  }
}

void makeRoom(Instance& instance, BIMSessionRec& session) {
  if (session.length < kSentenceLimit) return;
  if (isWhiteSpace(byteBefore(session, 1))) {
    dropAtWhiteSpace(session);
  } else if (session.length >= kHardLimit) {
    dropInsideWord(instance, session);
  }
}

// The tail goes with the byte behind it, which ends the text.
template <class Cells>
void moveTailUp(const BIMSessionRec& session, Cells& cells) {
  std::copy_backward(cells.begin() + session.cursor, cells.begin() + session.length + 1,
                     cells.begin() + session.length + 2);
}

template <class Cells>
void moveTailDown(const BIMSessionRec& session, Cells& cells) {
  std::copy(cells.begin() + session.cursor, cells.begin() + session.length + 1,
            cells.begin() + session.cursor - 1);
}

void insertByte(Instance& instance, BIMSessionRec& session, std::uint8_t keyByte,
                ByteOrigin origin) {
  makeRoom(instance, session);
  if (session.length == 0) session.place = 0;
  SessionText& text = *session.sessionText;
  if (session.length > session.cursor) {
    moveTailUp(session, text);
    moveTailUp(session, session.beyondAscii);
  }
  if (session.cursor < session.place) ++session.place;
  text[session.cursor] = keyByte;
  session.beyondAscii[session.cursor] = origin == ByteOrigin::Key && !isAscii(keyByte);
  ++session.cursor;
  ++session.length;
  text[session.length] = 0;
}

// True where an ASCII letter went from inside the text. With the cursor at the end the deleted byte
// stays in place behind the new end, and whether it was a letter isn't told.
bool deleteByte(BIMSessionRec& session) {
  if (session.cursor == 0 || session.length == 0) return false;
  SessionText& text = *session.sessionText;
  bool letterDeleted = false;
  if (session.cursor < session.length) {
    letterDeleted = isAsciiLetter(text[session.cursor - 1]);
    moveTailDown(session, text);
    moveTailDown(session, session.beyondAscii);
  }
  if (session.cursor <= session.place) --session.place;
  text[session.length] = 0;
  --session.cursor;
  --session.length;
  return letterDeleted;
}

// A dash made here of two hyphens stands behind the first of them: two bytes, one character.
bool isDashOfTwo(const BIMSessionRec& session, std::uint32_t at) {
  if (at == 0 || at >= session.length) return false;
  const SessionText& text = *session.sessionText;
  return text[at] == kEmDash && !session.beyondAscii[at] && text[at - 1] == kHyphen;
}

bool deleteCharacter(BIMSessionRec& session) {
  if (session.cursor != 0 && isDashOfTwo(session, session.cursor - 1)) deleteByte(session);
  return deleteByte(session);
}

// At its ends the caret of the document goes on, into what the text doesn't show.
void moveLeft(BIMSessionRec& session) {
  if (session.cursor == 0) return losePlace(&session);
  session.editState |= kEditCursorMovedLeft;
  session.cursor -= isDashOfTwo(session, session.cursor - 1) ? 2 : 1;
}

void moveRight(BIMSessionRec& session) {
  if (session.cursor == session.length) return losePlace(&session);
  session.cursor += isDashOfTwo(session, session.cursor + 1) ? 2 : 1;
}

// True where a window was up: the key was for that. Without one the session keeps
// even its marks.
bool escape(Instance& instance, BIMSessionRec& session) {
  const bool windowUp = BIMCancelWindowSession(instance);
  BIMAlwaysCancelWindowSession(instance);
  if (windowUp) BIM_Cancel_Session_Text(&session);
  return windowUp;
}

struct KeyResult {
  bool consumed = false;
  bool letterDeleted = false;
};

KeyResult changeBuffer(Instance& instance, BIMSessionRec& session, std::uint8_t keyByte,
                       ByteOrigin origin) {
  if (keyByte == 0) return {};
  session.published = false;
  switch (keyByte) {
    case kBackspaceKey:
    case kDeleteKey:
      Cancel_DocumentTextRange();
      return {false, deleteCharacter(session)};
    case kEscapeKey:
      return {escape(instance, session), false};
    case kLeftArrowKey:
      moveLeft(session);
      return {};
    case kRightArrowKey:
      moveRight(session);
      return {};
    default:
      Cancel_DocumentTextRange();
      insertByte(instance, session, keyByte, origin);
      return {};
  }
}

}  // namespace

std::int32_t BIMHandleInput(Instance& instance, BIMSessionRec* session, std::uint8_t keyByte,
                            ByteOrigin origin) {
  if (session == nullptr) {
    BIMSessionOpen(instance, 0, session);
    BIMSessionActivate(instance, session);
  }
  if (session == nullptr || !session->sessionText) return 0;
  const std::uint8_t key = keyByte == kEnterKey ? std::uint8_t{kReturnKey} : keyByte;
  if (leavesText(key, 0)) {
    leaveText(instance, session, key);
    return 0;
  }
  const KeyResult result = changeBuffer(instance, *session, key, origin);
  CallInteractiveEventHandler(instance, session, key, result.letterDeleted);
  return result.consumed ? 1 : 0;
}

std::int32_t Cancel_DocumentTextRange() { return 0; }

}  // namespace quorvane
