#include "src/session/QBIM_IMK_Publication.h"

#include <algorithm>
#include <span>

#include "src/bridge/qorv_sharedmem.h"
#include "src/session/CurrentAppFlags.h"
#include "src/session/FixGuard.h"

namespace quorvane {
namespace {

// Entries of the INTERACTIVESCANPTR and QORVSTATUS groups.
constexpr std::uint32_t kChangeCode = 4;
constexpr std::uint32_t kSentenceStartEntry = 5;
constexpr std::uint32_t kScanPosition = 7;
constexpr std::uint32_t kAppFlagsCopy = 1;

void putWord(std::span<std::uint8_t> record, std::size_t offset, std::uint32_t value) {
  for (std::size_t i = 0; i < 4; ++i) {
    record[offset + i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
  }
}

std::uint32_t getWord(std::span<const std::uint8_t> record, std::size_t offset) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) value = (value << 8) | record[offset + i];
  return value;
}

void publishMarks(Process& process, const BIMSessionRec& session) {
  const std::uint32_t flags = process.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
  PUT_TOOLCRECPTR(process, ToolCRecPtr_SessionKind, session.documentTag);
  PUT_TOOLCRECPTR_INTERACTIVESCANPTR(process, kChangeCode, session.editState);
  PUT_TOOLCRECPTR_INTERACTIVESCANPTR(process, kScanPosition, session.scanMark7);
  PUT_TOOLCRECPTR(process, ToolCRecPtr_SessionMark, session.appMark30);
  PUT_TOOLCRECPTR_QORVSTATUS(process, kAppFlagsCopy, flags);
  PUT_TOOLCRECPTR(process, ToolCRecPtr_AppFlagStatus, flags);
  PUT_TOOLCRECPTR(process, ToolCRecPtr_SessionHandle, session.handle);
}

void writeTextRecord(std::span<std::uint8_t> record, const BIMSessionRec& session,
                     std::uint8_t keyByte) {
  const SessionText& text = *session.sessionText;
  putWord(record, kTextCursorOffset, session.cursor);
  putWord(record, kTextLengthOffset, session.length);
  // The byte at the cursor goes along: at the end of the text that is its terminator. With a full
  // buffer it falls on the key byte, which is written behind it.
  std::copy_n(text.begin(), session.cursor + 1, record.begin() + kTextOffset);
  record[kTextKeyOffset] = keyByte;
}

}  // namespace

std::int32_t Set_InteractiveSession(Process& process, BIMSessionRec* session,
                                    std::uint8_t keyByte) {
  if (session == nullptr || !session->sessionText) return 0;
  {
    ToolRec record(process);
    if (!record || GET_TOOLCRECPTR(process, ToolCRecPtr_InteractiveMode) == 0) return 0;
    publishMarks(process, *session);
  }
  InteractiveTextRecord textRecord(process);
  if (!textRecord || !session->sessionText) return 0;
  if (keyByte == 0 && session->cursor != 0) keyByte = (*session->sessionText)[session->cursor - 1];
  writeTextRecord(textRecord.bytes(), *session, keyByte);
  return 1;
}

bool takeChanges(Process& process, BIMSessionRec* session) {
  if (session == nullptr) session = BIMGetActiveSession(process);
  if (session == nullptr) return false;
  bool textChanged = false;
  {
    ToolRec record(process);
    if (!record) return false;
    if (GET_TOOLCRECPTR(process, ToolCRecPtr_ScanPositionValid) != 0) {
      session->scanMark7 = GET_TOOLCRECPTR_INTERACTIVESCANPTR(process, kScanPosition);
    }
    if ((session->sentenceFlags & kSentenceStart) == 0) {
      session->sentenceFlags = GET_TOOLCRECPTR_INTERACTIVESCANPTR(process, kSentenceStartEntry);
    }
    session->appMark32 = GET_TOOLCRECPTR(process, ToolCRecPtr_SuggestionState);
    session->editState = GET_TOOLCRECPTR_INTERACTIVESCANPTR(process, kChangeCode);
    session->appMark30 = GET_TOOLCRECPTR(process, ToolCRecPtr_SessionMark);
    textChanged = GET_TOOLCRECPTR(process, ToolCRecPtr_BufferChanged) != 0;
    if (textChanged) PUT_TOOLCRECPTR(process, ToolCRecPtr_BufferChanged, 0);
  }
  return textChanged && CheckEditReplacements(process, session) != 0;
}

void Update_Document_Session(Process& process, BIMSessionRec* session) {
  takeChanges(process, session);
}

void Check_Update_Document_Session_Buffer(Process& process, BIMSessionRec* session) {
  takeText(process, session);
}

std::int32_t CheckEditReplacements(Process& process, BIMSessionRec* session) {
  if (session == nullptr || !session->sessionText) return 0;
  InteractiveTextRecord textRecord(process);
  if (!textRecord || !session->sessionText) return 0;
  const std::span<const std::uint8_t> bytes = textRecord.bytes();
  const std::uint32_t cursor = getWord(bytes, kTextCursorOffset);
  const std::uint32_t length = getWord(bytes, kTextLengthOffset);
  if (cursor > length || length > kSessionTextSize) {
    ++process.state<PublicationState>().droppedEdits;
    return 0;
  }
  session->cursor = cursor;
  session->length = length;
  std::copy_n(bytes.begin() + kTextOffset, cursor, session->sessionText->begin());
  return 1;
}

}  // namespace quorvane
