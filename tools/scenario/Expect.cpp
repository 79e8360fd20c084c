// Statements that expect: what the documents, the sessions, the shared records and the recorded
// calls show.

#include <algorithm>
#include <array>
#include <utility>

#include "src/session/QBIM_IMK_Sessions.h"
#include "tools/scenario/World.h"

namespace quorvane::scenario {
namespace {

// Documents and outcomes.

// The text with | at the caret, [ ] around a selection and < > around marked text.
std::string show(const field::Document& document) {
  const NSRange selection = document.selection();
  const NSRange marked = document.markedRange().value_or(NSRange{NSNotFound, 0});
  const std::u16string& text = document.text();
  std::u16string shown;
  for (std::uint64_t i = 0; i <= text.size(); ++i) {
    if (selection.length != 0 && i == selection.location + selection.length) shown += u']';
    if (marked.length != 0 && i == marked.location) shown += u'<';
    if (i == selection.location) shown += selection.length != 0 ? u'[' : u'|';
    if (marked.length != 0 && i == marked.location + marked.length) shown += u'>';
    if (i < text.size()) shown += text[i];
  }
  return describe(literalFromUtf16(shown));
}
void expectDocument(World& world, const Arguments& is) {
  world.expectEqual(describe(is[0].text), show(world.focused()));
}
void expectNamedDocument(World& world, const Arguments& is) {
  world.expectEqual(describe(is[1].text), show(world.knownDocument(is[0].word)));
}

void expectOutcome(World& world, field::Outcome expected) {
  std::string found = world.outcomes.empty() ? "no key" : "";
  for (const field::Outcome outcome : world.outcomes) {
    if (outcome != expected) found = field::describe(outcome);
  }
  world.expect(found.empty(), std::string(field::describe(expected)), found);
}
void expectConsumed(World& world, const Arguments& /*is*/) {
  expectOutcome(world, field::Outcome::Consumed);
}
void expectPassedOn(World& world, const Arguments& /*is*/) {
  expectOutcome(world, field::Outcome::PassedOn);
}

void expectPassedAfterError(World& world, const Arguments& /*is*/) {
  expectOutcome(world, field::Outcome::PassedAfterError);
  world.takeThrown();
}

// Sessions.

std::string show(const BIMSessionRec* session) {
  if (session == nullptr) return "no session";
  if (!session->sessionText) return "no text buffer";
  const std::uint8_t* text = session->sessionText->data();
  const std::uint32_t length = std::min(session->length, kSessionTextSize);
  const std::uint32_t cursor = std::min(session->cursor, length);
  return describe(literalFromBytes({text, cursor})) + "|" +
         describe(literalFromBytes({text + cursor, length - cursor}));
}
void expectSession(World& world, const Arguments& is) {
  world.expectEqual(describe(is[0].text), show(world.activeSession()));
}
void expectNamedSession(World& world, const Arguments& is) {
  world.expectEqual(describe(is[1].text), show(world.sessionOf(is[0].word)));
}
void expectSessionEnd(World& world, const Arguments& is) {
  const std::string found = show(world.activeSession());
  world.expect(found.ends_with(describe(is[0].text)), "... " + describe(is[0].text), found);
}
void expectActiveSession(World& world, const Arguments& is) {
  const BIMSessionRec* session = world.activeSession();
  const bool holds = session != nullptr && session == world.sessionOf(is[0].word);
  world.expect(holds, "the session of " + is[0].word, session ? "another session" : "no session");
}
void expectNoSession(World& world, const Arguments& /*is*/) {
  world.expectEqual("no session", world.activeSession() ? "a session" : "no session");
}
void expectSessionCount(World& world, const Arguments& is) {
  std::int64_t count = 0;
  const BIMSessionRec* session = world.instance.state<SessionState>().gSessionHandleStart;
  for (; session != nullptr; session = session->next) ++count;
  world.expectNumber(is[0].number, count);
}
void expectSessionByte(World& world, const Arguments& is) {
  const BIMSessionRec* session = world.activeSession();
  if (session == nullptr || !session->sessionText) throw BadStatement("no session is active");
  const auto index = static_cast<std::size_t>(is[0].number);
  if (index > kSessionTextSize) throw BadStatement("no such byte");
  world.expectNumber(is[1].number, (*session->sessionText)[index]);
}

struct SessionValue {
  std::string_view name;
  std::int64_t (*read)(const BIMSessionRec&);
};
constexpr std::array<SessionValue, 10> kSessionValues{{
    {"cursor", [](auto& session) { return std::int64_t{session.cursor}; }},
    {"length", [](auto& session) { return std::int64_t{session.length}; }},
    {"editState", [](auto& session) { return std::int64_t{session.editState}; }},
    {"appMark32", [](auto& session) { return std::int64_t{session.appMark32}; }},
    {"appMark30", [](auto& session) { return std::int64_t{session.appMark30}; }},
    {"scanMark7", [](auto& session) { return std::int64_t{session.scanMark7}; }},
    {"sentenceFlags", [](auto& session) { return std::int64_t{session.sentenceFlags}; }},
    {"documentTag", [](auto& session) { return std::int64_t{session.documentTag}; }},
    {"appInput", [](auto& session) { return std::int64_t{session.appInput}; }},
    {"signature", [](auto& session) { return std::int64_t{session.signature}; }},
}};

void expectValue(World& world, const BIMSessionRec* session, const Argument& name,
                 const Argument& value) {
  if (session == nullptr) return world.expect(false, "a session", "none");
  for (const SessionValue& known : kSessionValues) {
    if (known.name == name.word) return world.expectNumber(value.number, known.read(*session));
  }
  throw BadStatement("a session has no " + name.word);
}
void expectSessionValue(World& world, const Arguments& is) {
  expectValue(world, world.activeSession(), is[0], is[1]);
}
void expectNamedSessionValue(World& world, const Arguments& is) {
  expectValue(world, world.sessionOf(is[1].word), is[0], is[2]);
}

// Shared records.

void expectField(World& world, const Arguments& is) {
  world.expectNumber(is[1].u32(), world.records().field(is[0].u32()));
}
void expectStatus(World& world, const Arguments& is) {
  world.expectNumber(is[1].u32(), world.records().status(is[0].u32()));
}
void expectEntry(World& world, const Arguments& is) {
  world.expectNumber(is[1].u32(), world.records().scanEntry(is[0].u32()));
}
void expectBit(World& world, const Arguments& is, bool set) {
  const std::uint32_t word = world.records().field(is[0].u32());
  const bool found = ((word >> is[1].u32()) & 1) != 0;
  const auto state = [](bool on) { return std::string(on ? "set" : "clear"); };
  world.expectEqual(state(set), state(found));
}
void expectBitSet(World& world, const Arguments& is) { expectBit(world, is, true); }
void expectBitClear(World& world, const Arguments& is) { expectBit(world, is, false); }
void expectFieldNamesSession(World& world, const Arguments& is) {
  const BIMSessionRec* session = world.sessionOf(is[1].word);
  if (session == nullptr) return world.expect(false, "a session of " + is[1].word, "none");
  world.expectNumber(static_cast<std::uint32_t>(session->handle),
                     world.records().field(is[0].u32()));
}
void expectPublished(World& world, const Arguments& is) {
  const memory::PublishedText found = world.records().published();
  const auto show = [](const std::string& text, std::int64_t length, const std::string& key) {
    return "\"" + text + "\" length " + std::to_string(length) + " key \"" + key + "\"";
  };
  const std::string key = describe(literalFromBytes({&found.keyByte, 1}));
  world.expectEqual(show(describe(is[0].text), is[1].number, describe(is[2].text)),
                    show(describe(literalFromBytes(found.text)), found.length, key));
}
void expectBytes(World& world, const Arguments& is) {
  const auto id = world.host.sharedMemory.find(is[0].u32());
  if (!id) return world.expect(false, "segment " + is[0].word, "none");
  const auto found =
      world.host.sharedMemory.read(*id, static_cast<std::size_t>(is[1].number), is[2].bytes.size());
  world.expectEqual(describe(literalFromBytes(is[2].bytes)), describe(literalFromBytes(found)));
}
void expectCommand(World& world, const Arguments& is) {
  const auto words = world.host.mainApplication.command();
  const auto show = [](std::uint32_t command, std::uint32_t signature, std::int64_t pid) {
    return describeCode(command) + " from " + describeCode(signature) + " process " +
           std::to_string(pid);
  };
  world.expectEqual(show(is[0].u32(), is[1].u32(), is[2].number),
                    show(words[0], words[3], words[4]));
}
void expectClientName(World& world, const Arguments& is) {
  world.expectEqual(describe(is[0].text), world.host.mainApplication.clientName());
}
void expectAttachments(World& world, const Arguments& is, bool attached) {
  const auto id = world.host.sharedMemory.find(is[0].u32());
  const bool found = id && world.host.sharedMemory.attachments(*id) != 0;
  const auto state = [](bool on) { return std::string(on ? "attached" : "detached"); };
  world.expectEqual(state(attached), state(found));
}
void expectAttached(World& world, const Arguments& is) { expectAttachments(world, is, true); }
void expectDetached(World& world, const Arguments& is) { expectAttachments(world, is, false); }

// The process, its surroundings and time.

void expectExit(World& world, const Arguments& is) {
  const auto found = world.host.application.exitStatus;
  world.expectEqual(std::to_string(is[0].number), found ? std::to_string(*found) : "no exit");
}
void expectRunning(World& world, const Arguments& /*is*/) {
  world.expectEqual("running", world.host.application.exitStatus ? "exited" : "running");
}
void expectMainResult(World& world, const Arguments& is) {
  const auto found = world.mainResult;
  world.expectEqual(std::to_string(is[0].number), found ? std::to_string(*found) : "not started");
}
void expectStartFailure(World& world, const Arguments& is) {
  const auto found = std::exchange(world.startError, {});
  const std::string pattern = toBytes(is[0].text);
  world.expect(found && matches(pattern, *found), pattern, found.value_or("the start succeeds"));
}
void expectDefault(World& world, const Arguments& is) {
  const auto& values = world.host.userDefaults.values;
  choose(is[0].word, kUserDefaults);
  const auto value = values.find(is[0].word);
  const char* found = value == values.end() ? "unset" : value->second ? "on" : "off";
  choose(is[1].word, "unset on off");
  world.expectEqual(is[1].word, found);
}
void expectFront(World& world, const Arguments& is) {
  const ProcessSerialNumber expected = is[0].word == "main-application"
                                           ? world.host.mainApplication.psn()
                                           : world.application(is[0].word);
  const ProcessSerialNumber found = world.host.processes.front();
  world.expectNumber(expected.lowLongOfPSN, found.lowLongOfPSN);
}
void expectWritingStyles(World& world, const Arguments& is) {
  const auto found = world.writingStyles;
  if (is[0].word != "no" && !parseNumber(is[0].word)) throw BadStatement("no number of styles");
  world.expectEqual(is[0].word, found ? std::to_string(*found) : "no");
}
void expectTicks(World& world, const Arguments& is) {
  if (is[1].measure < is[0].measure) throw BadStatement("it ends before it begins");
  const std::uint64_t passed = world.host.clock.now() - world.markedTime;
  const double ticks = static_cast<double>(passed) / memory::kNanosecondsPerTick;
  world.expect(ticks >= is[0].measure && ticks <= is[1].measure,
               is[0].word + " to " + is[1].word + " ticks", std::to_string(ticks) + " ticks");
}

// Records in order. Each has its reading place; what was matched is behind it.

struct Unread {
  std::string name;
  std::vector<std::string> lines;  ///< all of them
  std::size_t& at;
};

Unread unread(World& world, const Argument& name) {
  std::string singular = name.word;
  if (singular.ends_with('s')) singular.pop_back();
  std::size_t& at = world.seen[singular];
  return {singular, recordLines(world, singular), at};
}

std::string show(const Unread& record) {
  if (record.at >= record.lines.size()) return "no further " + record.name;
  std::string text;
  for (std::size_t i = record.at; i < record.lines.size(); ++i) {
    text += (i == record.at ? "" : "\n            ") + record.lines[i];
  }
  return text;
}

std::size_t find(const Unread& record, const std::string& pattern) {
  std::size_t i = record.at;
  while (i < record.lines.size() && !matches(pattern, record.lines[i])) ++i;
  return i;
}

void expectNext(World& world, const Arguments& is) {
  const Unread record = unread(world, is[0]);
  for (const Literal& text : is[1].texts) {
    const std::string pattern = toBytes(text);
    const bool holds = record.at < record.lines.size() && matches(pattern, record.lines[record.at]);
    world.expect(holds, pattern, show(record));
    if (record.at < record.lines.size()) ++record.at;
  }
}
void expectLater(World& world, const Arguments& is) {
  const Unread record = unread(world, is[0]);
  const std::string pattern = toBytes(is[1].text);
  const std::size_t place = find(record, pattern);
  world.expect(place < record.lines.size(), pattern, show(record));
  if (place < record.lines.size()) record.at = place + 1;
}
void expectNone(World& world, const Arguments& is) {
  const Unread record = unread(world, is[0]);
  const std::string pattern = toBytes(is[1].text);
  const std::size_t place = find(record, pattern);
  const bool found = place < record.lines.size();
  world.expect(!found, "no " + record.name + " " + pattern, found ? record.lines[place] : "");
}
void expectNoMore(World& world, const Arguments& is) {
  const Unread record = unread(world, is[0]);
  world.expect(record.at >= record.lines.size(), "no further " + record.name, show(record));
}
void expectTimes(World& world, const Arguments& is) {
  const Unread record = unread(world, is[1]);
  const std::string pattern = toBytes(is[2].text);
  const auto count = std::count_if(
      record.lines.begin() + static_cast<std::ptrdiff_t>(std::min(record.at, record.lines.size())),
      record.lines.end(), [&](const std::string& line) { return matches(pattern, line); });
  world.expectNumber(is[0].number, count);
}

constexpr Pattern kExpectations[] = {
    {"expect document TEXT", expectDocument},
    {"expect document NAME TEXT", expectNamedDocument},
    {"expect consumed", expectConsumed},
    {"expect passed on", expectPassedOn},
    {"expect passed on after an error", expectPassedAfterError},
    {"expect session TEXT", expectSession},
    {"expect session of NAME TEXT", expectNamedSession},
    {"expect session ends TEXT", expectSessionEnd},
    {"expect session of NAME is active", expectActiveSession},
    {"expect no session is active", expectNoSession},
    {"expect NUMBER sessions", expectSessionCount},
    {"expect session byte PLACE is BYTE", expectSessionByte},
    {"expect session NAME is NUMBER", expectSessionValue},
    {"expect session NAME of NAME is NUMBER", expectNamedSessionValue},
    {"expect field FIELD is NUMBER", expectField},
    {"expect field FIELD has bit BIT", expectBitSet},
    {"expect field FIELD lacks bit BIT", expectBitClear},
    {"expect field FIELD names the session of NAME", expectFieldNamesSession},
    {"expect status ENTRY is NUMBER", expectStatus},
    {"expect entry ENTRY is NUMBER", expectEntry},
    {"expect published TEXT length NUMBER key TEXT", expectPublished},
    {"expect segment SEGMENT at PLACE to hold BYTES", expectBytes},
    {"expect segment SEGMENT is attached", expectAttached},
    {"expect segment SEGMENT is detached", expectDetached},
    {"expect command NUMBER from NUMBER process NUMBER", expectCommand},
    {"expect client name TEXT", expectClientName},
    {"expect exit status NUMBER", expectExit},
    {"expect still running", expectRunning},
    {"expect main returned NUMBER", expectMainResult},
    {"expect start failed TEXT", expectStartFailure},
    {"expect default TEXT is NAME", expectDefault},
    {"expect NAME in front", expectFront},
    {"expect NAME writing styles", expectWritingStyles},
    {"expect TIME to TIME ticks passed", expectTicks},
    {"expect next RECORD TEXTS", expectNext},
    {"expect no more RECORD", expectNoMore},
    {"expect no RECORD TEXT", expectNone},
    {"expect NUMBER RECORD TEXT", expectTimes},
    {"expect RECORD TEXT", expectLater},
};

}  // namespace

std::span<const Pattern> expectPatterns() { return kExpectations; }

}  // namespace quorvane::scenario
