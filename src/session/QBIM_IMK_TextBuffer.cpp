#include "src/session/QBIM_IMK_TextBuffer.h"

#include <algorithm>

#include "src/session/CharacterPolicy.h"
#include "src/session/QBIM_IMK_Interactive.h"
#include "src/session/QBIM_IMK_Windows.h"

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

void dropInsideWord(Process& process, BIMSessionRec& session) {
  if (session.length > session.cursor + kTailMargin) {
    session.length = session.cursor;
  } else {
    BIM_CancelSessionTextBuffer(process, &session);
  }
}

void makeRoom(Process& process, BIMSessionRec& session) {
  if (session.length < kSentenceLimit) return;
  if (isWhiteSpace(byteBefore(session, 1))) {
    dropAtWhiteSpace(session);
  } else if (session.length >= kHardLimit) {
    dropInsideWord(process, session);
  }
}

void insertByte(Process& process, BIMSessionRec& session, std::uint8_t keyByte) {
  makeRoom(process, session);
  SessionText& text = *session.sessionText;
  if (session.length > session.cursor) {
    std::copy_backward(text.begin() + session.cursor, text.begin() + session.length + 1,
                       text.begin() + session.length + 2);
  }
  text[session.cursor] = keyByte;
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
    std::copy(text.begin() + session.cursor, text.begin() + session.length + 1,
              text.begin() + session.cursor - 1);
  }
  text[session.length] = 0;
  --session.cursor;
  --session.length;
  return letterDeleted;
}

void moveLeft(BIMSessionRec& session) {
  if (session.cursor == 0) return;
  session.editState |= kEditCursorMovedLeft;
  --session.cursor;
}

void moveRight(BIMSessionRec& session) {
  if (session.cursor < session.length) ++session.cursor;
}

// True where a window of the checker was up: the key was for that. Without one the session keeps
// even its marks.
bool escape(Process& process, BIMSessionRec& session) {
  const bool windowUp = BIMCancelWindowSession(process);
  BIMAlwaysCancelWindowSession(process);
  if (windowUp) BIM_Cancel_Session_Text(&session);
  return windowUp;
}

void moveVertically(Process& process, BIMSessionRec& session) {
  BIMCancelWindowSession(process);
  BIMMouseEditCancelSession(process, &session);
}

struct KeyResult {
  bool consumed = false;
  bool letterDeleted = false;
};

KeyResult changeBuffer(Process& process, BIMSessionRec& session, std::uint8_t keyByte) {
  switch (keyByte) {
    case 0:
    case kPageUpKey:
    case kPageDownKey:
      return {};
    case kBackspaceKey:
    case kDeleteKey:
      return {false, deleteByte(session)};
    case kEscapeKey:
      return {escape(process, session), false};
    case kUpArrowKey:
    case kDownArrowKey:
      moveVertically(process, session);
      return {};
    case kLeftArrowKey:
      moveLeft(session);
      return {};
    case kRightArrowKey:
      moveRight(session);
      return {};
    default:
      insertByte(process, session, keyByte);
      return {};
  }
}

}  // namespace

std::int32_t BIMHandleInput(Process& process, BIMSessionRec* session, std::uint8_t keyByte) {
  if (session == nullptr) {
    BIMSessionOpen(process, 0, session);
    BIMSessionActivate(process, session);
  }
  if (session == nullptr || !session->sessionText) return 0;
  const std::uint8_t key = keyByte == kEnterKey ? std::uint8_t{kReturnKey} : keyByte;
  const KeyResult result = changeBuffer(process, *session, key);
  CallInteractiveEventHandler(process, session, key, result.letterDeleted);
  return result.consumed ? 1 : 0;
}

}  // namespace quorvane
