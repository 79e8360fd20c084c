// The text record coming back: any bytes in segment 893, written at any moment, taken over by a
// session that is being typed into; and the main application's reader on the same bytes.

#include "fuzz/Target.h"
#include "src/session/FixGuard.h"
#include "src/session/QBIM_IMK_Publication.h"
#include "src/session/QBIM_IMK_Sessions.h"
#include "tests/support/World.h"
#include "tools/checker/TextRecord.h"

namespace quorvane::fuzz {
namespace {

constexpr std::uint32_t kTextRecord = 893;
constexpr std::size_t kTextAt = 8;
constexpr int kStepLimit = 200;

std::vector<std::uint8_t> textSegment(Subject& subject) {
  return subject.host.sharedMemory.read(segment(subject, kTextRecord), 0, 10000);
}
void write(Subject& subject, std::size_t at, Bytes bytes) {
  subject.host.sharedMemory.write(segment(subject, kTextRecord), at, bytes);
}
BIMSessionRec* active(Subject& subject) { return BIMGetActiveSession(subject.instance); }

bool holdsText(const BIMSessionRec& session, const checker::TextRecord& record) {
  return session.cursor == record.text.size() && session.length == record.length &&
         std::equal(record.text.begin(), record.text.end(), session.sessionText->begin());
}

// What the main application's reader takes, and what is bounded instead, is in the session.
void takeOver(Subject& subject, Input& /*input*/) {
  BIMSessionRec* session = active(subject);
  subject.host.journal.beforeCall(0, {});
  const bool taken = CheckEditReplacements(subject.instance, session) != 0;
  const auto bytes = textSegment(subject);
  const auto record = checker::decodeTextRecord(bytes);
  if (taken && bytes.size() >= checker::kTextRecordSize) {
    require(!record || holdsText(*session, *record), "both readers see the same text");
    require(std::equal(session->sessionText->begin(),
                       session->sessionText->begin() + session->cursor, bytes.begin() + kTextAt),
            "the session has the record's text, as much as it holds");
  }
  if (!record || session == nullptr || !session->sessionText) return;
  std::vector<std::uint8_t> again(checker::kTextRecordSize, 0xAA);
  require(checker::encodeTextRecord(*record, again), "a decoded record can be encoded");
  again[392] = record->key;
  const auto decoded = checker::decodeTextRecord(again);
  require(decoded && decoded->text == record->text && decoded->length == record->length,
          "encoding and decoding give the record back");
}

void publish(Subject& subject, Input& input) {
  BIMSessionRec* session = active(subject);
  subject.host.journal.beforeCall(0, {});
  if (Set_InteractiveSession(subject.instance, session, input.byte()) == 0) return;
  const auto bytes = textSegment(subject);
  if (bytes.size() < checker::kTextRecordSize) return;
  const auto record = checker::decodeTextRecord(bytes);
  require(record && holdsText(*session, *record), "what is published can be read");
}

void refresh(Subject& subject, Input& input) {
  Check_Update_Document_Session_Buffer(subject.instance, input.flag() ? active(subject) : nullptr);
}
void writeAnywhere(Subject& subject, Input& input) {
  const std::size_t at = input.half() % 500;
  write(subject, at, input.counted());
}
void replace(Subject& subject, Input& input) { replaceSegment(subject, kTextRecord, input); }
void scribbleLater(Subject& subject, Input& input) {
  const std::size_t n = input.byte();
  const std::size_t at = input.half() % 500;
  subject.host.journal.beforeCall(
      n, [&subject, at, bytes = copyOf(input.counted())] { write(subject, at, bytes); });
}
// Of tens of keys at once, since a text has room for hundreds.
void type(Subject& subject, Input& input) {
  const NSEvent key = keyEvent(input);
  for (std::size_t left = 1 + input.byte() / 4; left > 0; --left) subject.press(key);
}

constexpr std::array<Step, 14> kSteps{
    takeOver,    publish, refresh,       takeOver, writeAnywhere, writeAnywhere, lieAboutText,
    correctText, replace, scribbleLater, type,     press,         press,         worldAction};

}  // namespace

void run(Bytes bytes) { takeSteps(bytes, kStepLimit, kSteps); }

}  // namespace quorvane::fuzz
