#include "src/session/QBIM_IMK_Publication.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "src/base/BigEndian.h"
#include "src/base/Log.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/menu/CurrentAppFlags.h"

namespace quorvane {
namespace {

void publishMarks(Instance& instance, const ToolRec& record, const BIMSessionRec& session) {
  const std::uint32_t flags = instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
  record.put(ToolCRecPtr_SessionKind, session.documentTag);
  record.put(InteractiveScan_ChangeCode, session.editState, FieldGroup::InteractiveScan);
  record.put(InteractiveScan_Position, session.scanMark7, FieldGroup::InteractiveScan);
  record.put(ToolCRecPtr_SessionMark, session.appMark30);
  record.put(QorvStatus_AppFlags, flags, FieldGroup::QorvStatus);
  record.put(ToolCRecPtr_AppFlagStatus, flags);
  record.put(ToolCRecPtr_SessionHandle, session.handle);
}

void writeTextRecord(std::span<std::uint8_t> record, const BIMSessionRec& session,
                     std::uint8_t keyByte) {
  const SessionText& text = *session.sessionText;
  putBigEndian(record, kTextCursorOffset, session.cursor);
  putBigEndian(record, kTextLengthOffset, session.length);
  // The byte at the cursor goes along: at the end of the text that is its terminator. With a full
  // buffer it falls on the key byte, which is written behind it.
  std::copy_n(text.begin(), session.cursor + 1, record.begin() + kTextOffset);
  record[kTextKeyOffset] = keyByte;
}

struct Extent {
  std::uint32_t cursor = 0;
  std::uint32_t length = 0;
};

// What can be taken of it is taken: the document has been changed already.
Extent readExtent(Instance& instance, std::span<const std::uint8_t> record) {
  const Extent claimed{bigEndianNumber<std::uint32_t>(record, kTextCursorOffset),
                       bigEndianNumber<std::uint32_t>(record, kTextLengthOffset)};
  const std::uint32_t cursor = std::min(claimed.cursor, kSessionTextSize);
  const std::uint32_t length = std::clamp(claimed.length, cursor, kSessionTextSize);
  if (cursor != claimed.cursor || length != claimed.length) {
    Log(instance, "CheckEditReplacements bounded cursor ", claimed.cursor, " to ", cursor,
        ", length ", claimed.length, " to ", length);
  }
  return {cursor, length};
}

// What stands in both texts, at their beginnings or at their ends, keeps its marks.
void carryMarks(std::span<const std::uint8_t> before, std::span<const std::uint8_t> after,
                SessionMarks& marks) {
  const auto head = std::mismatch(before.begin(), before.end(), after.begin(), after.end()).second;
  const auto tail = std::mismatch(before.rbegin(), before.rend(), after.rbegin(),
                                  std::make_reverse_iterator(head))
                        .second.base();
  const SessionMarks old = marks;
  const auto tailSize = after.end() - tail;
  auto* const place = std::fill_n(marks.begin() + (head - after.begin()), tail - head, false);
  std::copy_n(old.begin() + (before.end() - before.begin()) - tailSize, tailSize, place);
}

void replaceText(BIMSessionRec& session, std::span<const std::uint8_t> taken) {
  SessionText& text = *session.sessionText;
  const SessionText before = text;
  std::copy(taken.begin(), taken.end(), text.begin());
  carryMarks({before.data(), session.cursor}, {text.data(), taken.size()}, session.beyondAscii);
}

}  // namespace

std::int32_t Set_InteractiveSession(Instance& instance, BIMSessionRec* session,
                                    std::uint8_t keyByte) {
  if (session == nullptr || !session->sessionText) return 0;
  {
    ToolRec record(instance);
    if (!record || record.get(ToolCRecPtr_InteractiveMode) == 0) return 0;
    publishMarks(instance, record, *session);
  }
  InteractiveTextRecord textRecord(instance);
  if (!textRecord || !session->sessionText) return 0;
  if (keyByte == 0 && session->cursor != 0) keyByte = (*session->sessionText)[session->cursor - 1];
  writeTextRecord(textRecord.bytes(), *session, keyByte);
  session->published = true;
  return 1;
}

bool takeChanges(Instance& instance, BIMSessionRec* session) {
  if (session == nullptr) session = BIMGetActiveSession(instance);
  if (session == nullptr) return false;
  bool textChanged = false;
  {
    ToolRec record(instance);
    if (!record) return false;
    if (record.get(ToolCRecPtr_ScanPositionValid) != 0) {
      session->scanMark7 = record.get(InteractiveScan_Position, FieldGroup::InteractiveScan);
    }
    if ((session->sentenceFlags & kSentenceStart) == 0) {
      session->sentenceFlags =
          record.get(InteractiveScan_SentenceStart, FieldGroup::InteractiveScan);
    }
    session->appMark32 = record.get(ToolCRecPtr_SuggestionState);
    session->editState = record.get(InteractiveScan_ChangeCode, FieldGroup::InteractiveScan);
    session->appMark30 = record.get(ToolCRecPtr_SessionMark);
    textChanged = record.get(ToolCRecPtr_BufferChanged) != 0;
    if (textChanged) record.put(ToolCRecPtr_BufferChanged, 0);
  }
  return textChanged && CheckEditReplacements(instance, session) != 0;
}

void Update_Document_Session(Instance& instance, BIMSessionRec* session) {
  if (session == nullptr) session = BIMGetActiveSession(instance);
  if (takeChanges(instance, session)) losePlace(session);
}

std::int32_t CheckEditReplacements(Instance& instance, BIMSessionRec* session) {
  if (session == nullptr || !session->sessionText) return 0;
  InteractiveTextRecord textRecord(instance);
  if (!textRecord || !session->sessionText) return 0;
  const std::span<const std::uint8_t> bytes = textRecord.bytes();
  const Extent extent = readExtent(instance, bytes);
  replaceText(*session, bytes.subspan(kTextOffset, extent.cursor));
  session->cursor = extent.cursor;
  session->length = extent.length;
  return 1;
}

}  // namespace quorvane
