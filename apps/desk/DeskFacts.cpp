#include "apps/desk/DeskFacts.h"

#include <span>

#include "apps/Describe.h"
#include "apps/Segment.h"
#include "apps/Utf8Input.h"
#include "apps/desk/CheckerWindow.h"
#include "src/bridge/Presence.h"
#include "src/session/QBIM_IMK_Sessions.h"
#include "tools/checker/SharedSegments.h"
#include "tools/checker/TextRecord.h"

namespace quorvane::desk {
namespace {

constexpr std::size_t kCallsKept = 4;
constexpr std::size_t kMessagesKept = 3;
constexpr char16_t kCursor = u'\u258F';
constexpr char16_t kOutsideAscii = u'\u00B7';

std::u16string readable(std::span<const std::uint8_t> bytes) {
  std::u16string text;
  for (const std::uint8_t byte : bytes) text.push_back(byte < 128 ? byte : kOutsideAscii);
  return text;
}

void keep(std::deque<std::u16string>& lines, std::size_t most, const std::string& text) {
  lines.push_back(toUtf16(decodeUtf8Leniently(text)));
  if (lines.size() > most) lines.pop_front();
}

std::vector<std::u16string> list(const std::deque<std::u16string>& lines) {
  return {lines.begin(), lines.end()};
}

std::string number(std::size_t value) { return std::to_string(value); }

const Fact kPlainTyping{"word completion: off", {u"a tap of Shift (F3) turns it on"}};

std::u16string nameOf(std::uint32_t windowState) {
  if (windowState == kNoWindow) return u"window: none";
  return windowState == kPopupWindow ? u"window: popup" : u"window: document window";
}

}  // namespace

DeskFacts::DeskFacts(RunningSystem& system) : system_(system) {
  system_.textApplication().trace = [this](const field::EventReport& report) {
    if (report.event.type != NSEventType::KeyUp) keep(event_, 1, describe(report));
  };
  watchMessages();
}

void DeskFacts::watchMessages() {
  ObservedMessagePorts& ports = system_.messagePorts();
  ports.received = [this](std::int32_t messageId, const CFData* data) {
    keep(messages_, kMessagesKept, describeReceived(messageId, data));
  };
  ports.sent = [this](std::int32_t messageId, std::size_t size, std::int32_t result) {
    keep(messages_, kMessagesKept, describeSent(messageId, size, result));
  };
}

void DeskFacts::called(const field::ClientCall& call) {
  using enum field::ClientCallKind;
  if (call.kind == insertText || call.kind == setMarkedText) {
    keep(calls_, kCallsKept, field::describe(call));
  }
}

std::vector<Fact> DeskFacts::all(std::uint32_t windowState) {
  std::vector<Fact> facts{
      {"last event", list(event_)},
      sessionText(),
      publishedRecord(),
      mainApplication(windowState),
      {messages_.empty() ? "messages: none" : "messages", list(messages_)},
      {calls_.empty() ? "calls on the document: none" : "calls on the document", list(calls_)}};
  if (system_.controller().defaultEnglishMode()) facts.insert(facts.begin() + 1, kPlainTyping);
  return facts;
}

Fact DeskFacts::sessionText() {
  const BIMSessionRec* const session = system_.instance().state<SessionState>().gActiveSession;
  if (session == nullptr || session->sessionText == nullptr) return {"session text: none", {}};
  std::u16string text = readable({session->sessionText->data(), session->length});
  text.insert(session->cursor, 1, kCursor);
  return {"session text, cursor " + number(session->cursor) + " of " + number(session->length),
          {text}};
}

Fact DeskFacts::publishedRecord() {
  const Segment segment(system_.host().platform().sharedMemory, checker::kTextSegment.key);
  const auto record = checker::decodeTextRecord(segment.bytes());
  if (!record) return {"published record: none", {}};
  return {
      "published record, cursor " + number(record->text.size()) + " of " + number(record->length),
      {readable(record->text), u"key \"" + readable({&record->key, 1}) + u'"'}};
}

Fact DeskFacts::mainApplication(std::uint32_t windowState) {
  if (system_.standsAside()) return {"another input method has it", {u"every key passes"}};
  const bool runs = IsQUORVANEAPPRUNNING(system_.instance()) != 0;
  if (runs && system_.front().mainWindowTakesKeys()) {
    return {"main application: in front", {u"window: its own"}};
  }
  if (runs) return {"main application: runs", {nameOf(windowState)}};
  return {system_.hasMainApplication() ? "main application: has ended" : "main application: none",
          {}};
}

}  // namespace quorvane::desk
