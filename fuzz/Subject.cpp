#include "fuzz/Subject.h"

#include "fuzz/Target.h"
#include "src/bridge/QBIMMessageSend.h"
#include "src/shell/QBIM_IMK_Start.h"

namespace quorvane::fuzz {
namespace {

constexpr std::uint64_t kClockStep = 4'000'000;  // a quarter of a tick: waits spin less
constexpr std::uint32_t kToolRecord = 880;
constexpr std::size_t kFields = 68;
constexpr std::array<std::size_t, 3> kBusyFields{16, 22, 54};
constexpr std::uint32_t kScanBit = 0x10000;

bool isPlainCharacter(const NSEvent& event) {
  constexpr std::uint32_t kHarmless = NSEventModifierFlagShift | NSEventModifierFlagCapsLock;
  return event.type == NSEventType::KeyDown && (event.modifierFlags & ~kHarmless) == 0 &&
         event.characters.size() == 1 && event.characters[0] >= 0x20 && event.characters[0] < 0x7F;
}

}  // namespace

/// What an event is judged by, as it stood before.
struct Subject::Sight {
  std::u16string text;
  NSRange selection;
  bool marked = false;
  std::uint64_t clientChanges = 0;
  std::uint64_t parked = 0;  ///< texts that wait for an event to bring a client along
  bool firstKeyIsOurs = false;
  std::optional<int> toolRecord;
  std::array<std::uint32_t, kBusyFields.size()> busy{};
};

Subject::Subject() {
  host.journal.setRecording(false);
  host.clock.step = kClockStep;
  host.log.limit = 4;
  host.log.showPrivate = true;
  host.console.limit = 4;
  host.text.trace = [this](const field::EventReport& report) {
    if (report.posted) return;
    ++reports_;
    outcome_ = report.outcome;
  };
}

Subject::Sight Subject::look() {
  Sight sight;
  if (const field::Document* document = host.text.focused(); document != nullptr) {
    sight.text = document->text();
    sight.selection = document->selection();
    sight.marked = document->markedRange().has_value();
    sight.clientChanges = document->clientChanges();
  }
  const auto& controllerState = process.state<ControllerState>();
  if (controllerState.stringbuffer) ++sight.parked;
  if (!controllerState.stringbufferHandle.empty()) ++sight.parked;
  sight.firstKeyIsOurs = controllerState.KEYED_INITED_FLAG != 0;
  sight.toolRecord = host.sharedMemory.find(kToolRecord);
  for (std::size_t i = 0; i < kBusyFields.size(); ++i) {
    sight.busy[i] =
        host.sharedMemory.readWord(sight.toolRecord.value_or(-1), kFields + 4 * kBusyFields[i]);
  }
  return sight;
}

void Subject::press(NSEvent key, const field::Delivery& how) {
  key.type = NSEventType::KeyDown;
  deliver(key, how);
  key.type = NSEventType::KeyUp;
  deliver(key, how);
}

void Subject::deliver(const NSEvent& event, const field::Delivery& how) {
  if (host.text.focused() == nullptr) return;
  const Sight before = look();
  disturbed_ = false;
  reports_ = 0;
  const field::Outcome outcome = host.text.deliver(event, how);
  require(reports_ == 1 && outcome_ == outcome, "an event has one outcome");
  require(outcome == field::Outcome::PassedOn || outcome == field::Outcome::Consumed,
          "handling an event throws nothing");
  checkDelivered(event, outcome == field::Outcome::Consumed, before);
  checkLaw();
}

// Of all keys only the one key down that the start claims for itself is consumed, and what
// completion takes: a word being typed is marked text before or behind the key.
void Subject::checkDelivered(const NSEvent& event, bool consumed, const Sight& before) {
  const bool ours = before.firstKeyIsOurs && event.type == NSEventType::KeyDown;
  const bool completing = before.marked || look().marked || event.type == NSEventType::FlagsChanged;
  require(consumed == ours || completing, "nothing but the claimed key is consumed");
  if (!completing) checkDocument(event, consumed, before);
  checkToolRecord(before);
}

void Subject::checkDocument(const NSEvent& event, bool consumed, const Sight& before) {
  const field::Document& document = *host.text.focused();
  const std::uint64_t changes = document.clientChanges() - before.clientChanges;
  require(changes <= before.parked, "an event changes a document by what was parked");
  if (changes != 0) return;
  if (consumed) {
    require(document.text() == before.text, "a consumed key changes no document");
  } else if (isPlainCharacter(event)) {
    std::u16string expected = before.text;
    expected.replace(before.selection.location, before.selection.length, event.characters);
    require(document.text() == expected, "a passed key is inserted once");
  }
}

// A busy mark that somebody else had left may go; none of ours may stay.
void Subject::checkToolRecord(const Sight& before) {
  require(host.sharedMemory.totalAttachments() <= 1, "only the tool record stays attached");
  if (disturbed_ || !before.toolRecord) return;
  const Sight after = look();
  if (after.toolRecord != before.toolRecord) return;
  require(after.busy[0] == before.busy[0], "a key leaves the server port alone");
  require(after.busy[1] == 0 || after.busy[1] == before.busy[1], "no busy mark is left");
  require((after.busy[2] & ~before.busy[2] & kScanBit) == 0, "no scan stays asked for");
}

void Subject::checkLaw() {
  require(process.state<ControllerState>().handleEvent_BUSY == 0, "event handling isn't busy");
  const auto& sending = process.state<MessageSendState>();
  require(sending.TOOLCALLBUSY == 0 && sending.AEITEM_Process_active == 0, "sending isn't busy");
  require(!process.state<StartState>().NoRecursion, "starting isn't busy");
  require(host.text.errors().empty(), "the text field meets no error");
  checkSessions();
}

void Subject::checkSessions() {
  for (const auto& session : process.state<SessionState>().records) {
    require(session->cursor <= session->length, "the cursor lies inside the text");
    require(session->length <= kSessionTextSize, "the text lies inside its buffer");
  }
}

}  // namespace quorvane::fuzz
