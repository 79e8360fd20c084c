#include "src/session/FixGuard.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "src/base/KeyBytes.h"
#include "src/base/Log.h"
#include "src/bridge/ToolCalls.h"
#include "src/session/QBIM_IMK_Publication.h"
#include "src/session/WordInProgress.h"

namespace quorvane {
namespace {

constexpr std::array<std::string_view, kFixFaults> kFaultNames{
    "it contradicts what was typed",  "more was typed meanwhile", "it may be for another text",
    "it replaces more than there is", "it has no text",           "its text is missing"};

// Mac OS Roman from kEnDash on.
constexpr std::u16string_view kSmartCharacters = u"\u2013\u2014\u201C\u201D\u2018\u2019";
// Stand for bytes that are a character of their own each, but not which one.
constexpr char16_t kUnknown = 0xE000;

SavedText save(const BIMSessionRec& session) {
  if (!session.sessionText) return {};
  return {*session.sessionText, session.beyondAscii, session.cursor, session.length};
}

std::span<const std::uint8_t> beforeCaret(const SavedText& text) {
  return {text.bytes.data(), text.cursor};
}

bool beginsWith(const SavedText& text, const SavedText& beginning) {
  return text.cursor >= beginning.cursor &&
         std::ranges::equal(beforeCaret(text).first(beginning.cursor), beforeCaret(beginning));
}

void restore(BIMSessionRec& session, const SavedText& text) {
  *session.sessionText = text.bytes;
  session.beyondAscii = text.beyondAscii;
  session.cursor = text.cursor;
  session.length = text.length;
  session.published = false;
}

bool isUnchanged(const BIMSessionRec* session, const TakenText& taken) {
  return session != nullptr && session->sessionText && session->handle == taken.session &&
         std::ranges::equal(std::span(*session->sessionText).first(session->cursor),
                            beforeCaret(taken.after));
}

char16_t characterOf(std::uint8_t byte) {
  if (byte == '\r') return u'\n';
  if (byte < 128) return byte;
  const std::size_t smart = std::size_t{byte} - kEnDash;
  const bool isSmart = byte >= kEnDash && smart < kSmartCharacters.size();
  return isSmart ? kSmartCharacters[smart] : static_cast<char16_t>(kUnknown + byte);
}

bool isKnown(char16_t unit) {
  return unit < 128 || kSmartCharacters.find(unit) != std::u16string_view::npos;
}
bool isKnown(std::u16string_view text) {
  return std::ranges::all_of(text, [](char16_t unit) { return isKnown(unit); });
}

// As a document shows it. A dash of two hyphens is the first of them and the dash in the session; a
// byte of a key beyond ASCII is no dash.
std::u16string shown(const SavedText& saved) {
  std::u16string text;
  for (std::size_t i = 0; i < saved.cursor; ++i) {
    const std::uint8_t byte = saved.bytes[i];
    const bool typed = saved.beyondAscii[i];
    if (byte == kEmDash && !typed && text.ends_with(u'-')) text.pop_back();
    text += typed ? static_cast<char16_t>(kUnknown + byte) : characterOf(byte);
  }
  return text;
}

// What is known to stand before the caret.
std::u16string shownFrom(const SavedText& text, std::uint32_t place) {
  SavedText head = text;
  head.cursor = std::min(place, text.cursor);
  return shown(text).substr(shown(head).size());
}

bool reachesTooFar(const SavedText& text, std::uint32_t place, Utf16Units length) {
  return length.count > shownFrom(text, place).size();
}

enum class Match { Yes, No, Unknown };

Match match(const TakenText& taken, const std::u16string& text, Utf16Units length) {
  const std::u16string before = shown(taken.before);
  const std::u16string after = shown(taken.after);
  if (isKnown(text) && !after.ends_with(text)) return Match::No;
  const std::size_t keeps = before.size() - std::min<std::size_t>(length.count, before.size());
  const std::u16string_view kept = std::u16string_view(before).substr(0, keeps);
  if (!isKnown(std::u16string_view(before).substr(keeps))) {
    return isKnown(text) ? Match::No : Match::Unknown;
  }
  if (length.count > before.size()) return Match::No;
  if (!isKnown(text)) return after.starts_with(kept) ? Match::Unknown : Match::No;
  // A text that has no room for more begins anew.
  const bool full = kept.size() + text.size() > kSessionTextSize;
  return after == (full ? text : std::u16string(kept) + text) ? Match::Yes : Match::No;
}

}  // namespace

void Check_Update_Document_Session_Buffer(Instance& instance, BIMSessionRec* session) {
  if (session == nullptr) session = BIMGetActiveSession(instance);
  if (session == nullptr) return;
  auto& state = instance.state<FixState>();
  const bool waits = state.taken && isUnchanged(session, *state.taken);
  const SavedText before = waits ? state.taken->before : save(*session);
  const bool read = waits ? state.taken->read : session->published;
  if (!takeChanges(instance, session)) return;
  state.textsCome = true;
  const bool retyped = state.retyped || !beginsWith(before, state.scanned);
  state.taken = TakenText{session->handle, before, save(*session), read, state.late, retyped};
}

std::u16string shownBeforeCaret(Instance& instance) {
  const BIMSessionRec* const session = BIMGetActiveSession(instance);
  if (session == nullptr) return {};
  std::u16string text = shownFrom(save(*session), session->place);
  const WordInProgress* const word = instance.state<WordInProgressState>().latest;
  if (word != nullptr && text.ends_with(word->typed())) {
    text.resize(text.size() - word->typed().size());
  }
  return text;
}

void takeTextBack(Instance& instance) {
  if (instance.state<FixState>().taken) dropFix(instance, FixFault::Overtaken);
}

void scanSentence(Instance& instance, BIMSessionRec& session) {
  auto& state = instance.state<FixState>();
  const SavedText text = save(session);
  state.retyped = state.late && (state.retyped || !beginsWith(text, state.scanned));
  state.scanned = text;
  const bool answered = Do_checktypingSentScan(instance);
  Check_Update_Document_Session_Buffer(instance, &session);
  state.late = !answered;
}

std::optional<FixFault> faultOf(Instance& instance, const std::u16string& text, Utf16Units length) {
  const auto& state = instance.state<FixState>();
  const auto& taken = state.taken;
  if (!taken)
    return state.textsCome && length.count != 0 ? std::optional(FixFault::Alone) : std::nullopt;
  const BIMSessionRec* const session = BIMGetActiveSession(instance);
  if (!isUnchanged(session, *taken) || !taken->read) return FixFault::Overtaken;
  const Match found = match(*taken, text, length);
  if (found == Match::No) return FixFault::Contradiction;
  if (session->place != 0 && reachesTooFar(taken->before, session->place, length)) {
    return FixFault::Doubtful;
  }
  const bool doubtful = taken->late && (taken->retyped || found == Match::Unknown);
  return doubtful ? std::optional(FixFault::Doubtful) : std::nullopt;
}

void keepFix(Instance& instance, Utf16Units length) {
  auto& state = instance.state<FixState>();
  if (!state.taken) losePlace(BIMGetActiveSession(instance));
  state.taken.reset();
  ++state.kept;
  state.lastKept = length;
}

std::string_view nameOf(FixFault fault) { return kFaultNames[static_cast<std::size_t>(fault)]; }

void dropFix(Instance& instance, FixFault fault) {
  auto& state = instance.state<FixState>();
  const auto index = static_cast<std::size_t>(fault);
  ++state.dropped[index];
  Log(instance, "fix dropped: ", nameOf(fault));
  if (!state.taken) return;
  BIMSessionRec* const session = findSession(instance, state.taken->session);
  if (isUnchanged(session, *state.taken)) {
    restore(*session, state.taken->before);
  } else {
    BIM_CancelSessionTextBuffer(instance, session);
  }
  state.taken.reset();
}

}  // namespace quorvane
