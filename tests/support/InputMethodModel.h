#pragma once
// What the input method must make of events and messages, worked out naively: of the documents, and
// beside an honest main application of the sessions and of what the two share as well. Knows
// nothing of the input method.

#include <array>
#include <deque>
#include <map>
#include <utility>

#include "hosts/field/Document.h"
#include "hosts/keyboard/Keyboard.h"
#include "src/base/Modifiers.h"
#include "tests/support/SessionModel.h"

namespace quorvane::model {

/// Words of the tool record, counted from its field 0.
constexpr unsigned kRequests = 1, kMode = 6, kMenuFlags = 7, kTextChanged = 11, kWindowOwner = 12,
                   kPortBusy = 16, kSuspendTotal = 19, kSuspendCount = 20, kBusy = 22,
                   kControlDigits = 25, kPopupKey = 26, kClipboard = 27, kWindow = 31,
                   kSmartCharacters = 38, kReady = 42, kScanFlags = 54, kPasteTarget = 66,
                   kEditState = 73, kSentenceStart = 74;
constexpr std::uint32_t kEditor = 0x57525452, kEditorPid = 4243, kMainApplication = 0x51565058;
/// Bits of the classic mask.
constexpr std::uint32_t kCommand = 0x100, kShift = 0x200, kOption = 0x800, kControl = 0x1000,
                        kFunction = 0x20000;

constexpr NSRange kHere{NSNotFound, 0};

using Fields = std::map<unsigned, std::uint32_t>;

struct Message {
  std::int32_t id = 0;
  std::optional<std::uint32_t> number;  ///< at its head; empty: it is too short
  std::optional<std::u16string> text;   ///< behind that; empty: in no encoding
};

/// The main application was asked for something: what came of it.
struct Asked {
  std::uint32_t command = 0;
  std::deque<Message> arrived;  ///< while the input method waited
  Fields written;
  std::optional<RecordModel> text;
};

struct InputMethodModel {
  std::deque<field::Document> documents;  ///< each gets the passed keys and the fixes alone
  std::deque<SessionModel> sessions;      ///< in the same order
  std::size_t active = 0;
  Fields fields;
  RecordModel text;
  std::uint8_t publishedKey = 0;
  std::uint32_t switches = 0x11833;
  std::deque<Asked> answers;           ///< to what the event asks for, in order
  bool askedWrongly = false;           ///< for something else than it must
  std::deque<NSEvent> posted;          ///< must come back, in order
  std::map<std::string, int> reached;  ///< how often the rarer rules were
  std::shared_ptr<field::Clipboard> clipboard = std::make_shared<field::MemoryClipboard>();

  InputMethodModel() {
    addClient(false);
    activate(0);
    session().published = true;
  }

  void addClient(bool tagged) {
    documents.emplace_back(clipboard);
    sessions.emplace_back().tagged = tagged;
  }

  /// A client has got the focus.
  void activate(std::size_t client) {
    active = client;
    if (std::exchange(session().known, true)) return;
    publish(0);
    named_ = client;
    cancelWindow();
  }

  /// What a client gets before one of its events is looked at.
  void begin(std::size_t client) {
    activate(client);
    lastClient_ = client;
    if (!parked_) return;
    const auto [count, insertion] = *std::exchange(parked_, {});
    if (count > documents[client].selectedRange().location) return session().cancel();
    fix(count, insertion);
    ++reached["parked fixes"];
  }

  /// True: the input method must take the event, which came at `nanoseconds`.
  bool takes(const NSEvent& event, std::uint64_t nanoseconds) {
    const std::uint8_t key = SessionModel::leadByte(event.characters);
    const bool flagsChanged = event.type == NSEventType::FlagsChanged;
    const std::uint32_t mask =
        classicModifiers(event.modifierFlags) & ~(flagsChanged ? kFunction : 0);
    if (!flagsChanged && (mask & kCommand) != 0 && key == 9) return false;
    if (flagsChanged ? documentWindowTakes(mask) : documentWindowTakes(key, mask)) return true;
    const bool separate = nanoseconds > std::exchange(lastKey_, nanoseconds) + 500'000'000;
    if (popupTakes(key, mask, separate)) return true;
    if (event.type == NSEventType::KeyUp) return false;
    if (mask == kCommand && key == 'a') {
      session().cancel();
      cancelWindow();
    }
    armClipboard(mask);
    if (!flagsChanged && SessionModel::leaves(key, mask)) {
      cancelWindow();
      session().cancel();
      follow(key);
      ++reached["caret moves"];
      return false;
    }
    const bool typing = !flagsChanged && (mask & (kCommand | kControl | kFunction)) == 0;
    if (typing && taken_) drop();
    return typing && type(key);
  }

  /// The main application has begun anew, with new segments.
  void restarted() {
    for (auto& [field, value] : fields) value = 0;
    fields[kMode] = fields[kReady] = 1;
    text = {};
    publishedKey = 0;
    named_ = ~std::size_t{0};
    ++reached["restarts"];
  }

  /// An event that the session knows nothing of has gone to a document.
  void leftBehind(const NSEvent& event) {
    const bool appSwitch =
        (event.modifierFlags & NSEventModifierFlagCommand) != 0 && event.characters == u"\t";
    const bool reaches = event.type == NSEventType::LeftMouseDown ||
                         (event.type == NSEventType::KeyDown && !appSwitch);
    if (!reaches) return;
    if (taken_) drop();
    session().losePlace();
  }

  void arrived(const Message& message) {
    constexpr std::int32_t kUpdate = 0x55706474;
    if (message.id == kUpdate) return update();
    if (isUnknown(message.id)) return prepareCommand();
    if (!message.number) return;
    if (message.id == 230) return prepareCommand();
    if (message.id == 250 || message.id == 251) return paste(message);
    if (message.id != 202) return;
    arrivedFix(message);
    if (session().tagged) update();
  }

  void arrivedFix(const Message& message) {
    update(true);
    const std::uint32_t count = *message.number;
    if (!message.text || !agrees(count, *message.text)) return drop();
    if (lastClient_ && count > documents[*lastClient_].selectedRange().location) return drop();
    if (!taken_) session().losePlace();
    taken_.reset();
    if (lastClient_) return fix(count, *message.text);
    parked_ = {count, *message.text};
    tapTwice(NSEventModifierFlagShift);
  }

  /// Takes the place of the `count` units before the selection. Where there aren't so many it lands
  /// where the caret is.
  void fix(std::uint32_t count, const std::u16string& replacement) {
    field::Document& document = documents[lastClient_.value_or(0)];
    const std::uint64_t caret = document.selection().location;
    const bool fits = count <= caret;
    document.insertText(replacement, fits && count > 0 ? NSRange{caret - count, count} : kHere);
    ++reached[fits ? "fixes landed" : "keys without the place"];
  }

  /// A click was looked at again, once it was known where the focus is.
  void clicked(std::size_t client) {
    if (client == active) session().cancel();
    cancelWindow();
    ++reached[client == active ? "clicks within" : "clicks elsewhere"];
  }

  void press(char16_t character, std::uint32_t flags) {
    for (const auto type : {NSEventType::KeyDown, NSEventType::KeyUp}) {
      posted.push_back({type, flags, 0, {character}, nullptr});
    }
  }

 private:
  SessionModel& session() { return sessions[active]; }
  static bool isUnknown(std::int32_t id) { return id == 7 || id == -1; }
  static bool isDigit(std::uint8_t key) { return key >= '0' && key <= '9'; }
  static bool isLetter(std::uint8_t key) { return (key | 32) >= 'a' && (key | 32) <= 'z'; }

  /// No message holds a command that there is; the keys for it are pressed all the same.
  void prepareCommand() {
    tapTwice(NSEventModifierFlagCommand);
    ++reached["commands prepared"];
  }

  void tapTwice(std::uint32_t modifier) {
    for (const std::uint32_t flags : {modifier, 0U, modifier, 0U}) {
      posted.push_back({NSEventType::FlagsChanged, flags, 0, {}, nullptr});
    }
  }

  // The window.

  bool documentWindowTakes(std::uint32_t mask) {
    fields[kPopupKey] = mask != 0 ? 1 : 0;
    if (fields[kWindow] > 1) ask(102);
    return fields[kWindow] > 1;
  }
  bool documentWindowTakes(std::uint8_t key, std::uint32_t mask) {
    return fields[kWindow] > 1 && isDigit(key) && (mask & (kCommand | kOption)) != 0;
  }

  bool popupTakes(std::uint8_t key, std::uint32_t mask, bool separate) {
    constexpr std::string_view kLeftAlone = "\b\x1C\x43VXcvx";
    const bool leftAlone = kLeftAlone.find(static_cast<char>(key)) != std::string_view::npos;
    if (leftAlone || mask == kFunction || mask == kShift) return false;
    if (mask == kCommand && fields[kWindow] == 0) return false;
    fields[kPopupKey] = key;
    if (fields[kClipboard] == 2)
      restoreClipboard();
    else if (fields[kClipboard] == 0 && fields[kWindow] == 1)
      return popupWants(key, mask, separate);
    return false;
  }

  // After 101 the key is gone whatever the answer; after 106 the answer says so.
  bool popupWants(std::uint8_t key, std::uint32_t mask, bool separate) {
    if (key == 1 || key == 9) {
      ask(106);
      return fields[kPopupKey] == 0;
    }
    const bool choice = isDigit(key) && mask == (fields[kControlDigits] != 0 ? kControl : 0) &&
                        (separate || mask != 0);
    if (!choice && key != 31) return false;
    const bool mayAsk = fields[kMode] != 0 && (fields[kMenuFlags] & 0x400) == 0;
    if (mayAsk) ask(101);
    return mayAsk;
  }

  bool cancelWindow() {
    const bool up = fields[kWindow] != 0 && fields[kWindowOwner] != 0;
    if (up && fields[kWindowOwner] == kEditor) fields[kRequests] |= 1;
    return up;
  }

  void armClipboard(std::uint32_t mask) {
    if (mask == kCommand && fields[kClipboard] == 1) fields[kClipboard] = 2;
  }

  void restoreClipboard() {
    fields[kClipboard] = 0;
    fields[kRequests] |= 1U << 20;
    if (fields[kTextChanged] != 0) {
      takeText();
      session().losePlace();
    }
    ++reached["clipboards restored"];
  }

  // Typing.

  bool type(std::uint8_t key) {
    const bool allowed = (switches & 0x10) != 0 && fields[kMode] != 0 && fields[kSuspendTotal] == 0;
    const auto replacement = session().replacement(key, allowed ? fields[kSmartCharacters] : 0);
    if (!replacement) return typed(key == 3 ? 13 : key);
    const auto [byte, count] = *replacement;
    ++reached[isLetter(byte) ? "capitals" : byte < 210 ? "dashes" : "quotes"];
    if (isLetter(byte)) {
      press(byte, NSEventModifierFlagShift);
    } else {
      typed(byte, true);
      update(true);
      fix(count, {byte < 208 ? char16_t{byte} : u"–—“”‘’"[byte - 208]});
    }
    return true;
  }

  bool typed(std::uint8_t key, bool replaced = false) {
    const bool up = key == 27 && cancelWindow();
    if (key == 27 && (fields[kWindow] & 0xFF) != 0) fields[kRequests] |= 1;
    if (up) session().sentenceFlags = 0;
    session().typed(key, replaced);
    follow(key);
    return up;
  }

  void follow(std::uint8_t key) {
    if ((switches & 0x73) == 0 || isSuspended()) return;
    const bool clipboardInUse = fields[kClipboard] != 0;
    const bool counting = fields[kSuspendTotal] != 0;
    publish(key);
    const bool insideWord = (isLetter(key) || key == '&') && session().editState == 0;
    const bool goesBack = (key == 8 || key == 28) && fields[kWindow] == 0;
    if (key == 27 || (!counting && (insideWord || goesBack))) return;
    if (clipboardInUse) armClipboard(kCommand);
    if ((switches & 0x10000) != 0) {
      ask(87);
      update(true);
    }
    session().editState = 0;
  }

  bool isSuspended() {
    if (fields[kSuspendTotal] == 0) return false;
    const bool suspended = fields[kSuspendTotal] > ++fields[kSuspendCount];
    ++reached["suspended keys"];
    if (named_ == active) return suspended;
    fields[kSuspendTotal] = fields[kSuspendCount] = 0;
    return false;
  }

  void publish(std::uint8_t key) {
    if (fields[kMode] == 0) return;
    fields[kEditState] = session().editState;
    named_ = active;
    session().publish(text);
    session().published = true;
    publishedKey = key != 0 ? key : session().byteBefore();
  }

  void update(bool forFix = false) {
    if ((session().sentenceFlags & 1) == 0) session().sentenceFlags = fields[kSentenceStart];
    session().editState = fields[kEditState];
    if (fields[kTextChanged] == 0) return;
    const bool waits = forFix && taken_ && isUnchanged();
    Taken fresh{active, waits ? taken_->before : session(), {}};
    takeText();
    if (!forFix) return session().losePlace();
    fresh.after = session();
    taken_ = fresh;
    textsCome_ = true;
  }

  [[nodiscard]] bool isUnchanged() {
    return active == taken_->client && session().head() == taken_->after.head();
  }

  /// A message says the same as the text that came before it.
  bool agrees(std::uint32_t count, const std::u16string& insertion) {
    if (!taken_) return count == 0 || !textsCome_;
    if (!isUnchanged() || !taken_->before.published || reachesTooFar(count)) return false;
    const std::u16string before = taken_->before.shown();
    const std::u16string after = taken_->after.shown();
    const bool beyond = count > before.size();
    const std::size_t kept = before.size() - (beyond ? before.size() : count);
    if (SessionModel::plain(insertion) && !after.ends_with(insertion)) return false;
    if (!SessionModel::plain(before.substr(kept))) return !SessionModel::plain(insertion);
    if (beyond) return false;
    if (!SessionModel::plain(insertion)) return after.starts_with(before.substr(0, kept));
    const bool full = kept + insertion.size() > 384;
    const bool agreed = after == (full ? u"" : before.substr(0, kept)) + insertion;
    if (agreed) ++reached["fixes agreed"];
    return agreed;
  }

  /// It begins before what is known to stand in the document.
  [[nodiscard]] bool reachesTooFar(std::uint32_t count) {
    const SessionModel& before = taken_->before;
    const std::u16string head = before.shown(std::min(session().place, before.cursor));
    return session().place != 0 && count > before.shown().size() - head.size();
  }

  void drop() {
    ++reached["fixes dropped"];
    const auto taken = std::exchange(taken_, {});
    if (!taken) return;
    SessionModel& changed = sessions[taken->client];
    if (changed.head() != taken->after.head()) return changed.cancel();
    changed.cells = taken->before.cells;
    changed.cursor = taken->before.cursor;
    changed.length = taken->before.length;
    changed.published = false;
  }

  void takeText() {
    fields[kTextChanged] = 0;
    session().take(text);
    ++reached[text.possible() ? "texts taken back" : "texts bounded"];
  }

  void ask(std::uint32_t command) {
    askedWrongly |= answers.empty() || answers.front().command != command;
    if (askedWrongly) return;
    const Asked answer = std::move(answers.front());
    answers.pop_front();
    for (const Message& message : answer.arrived) arrived(message);
    for (const auto& [field, value] : answer.written) fields[field] = value;
    if (answer.text) text = *answer.text;
    ++reached["commands " + std::to_string(command)];
  }

  void paste(const Message& message) {
    std::uint32_t target = message.number == kEditorPid ? kEditor : fields[kPasteTarget];
    if (target != kEditor && target != kMainApplication) target = fields[kWindowOwner];
    if (target != kEditor) return;
    constexpr std::uint32_t kSpecial = NSEventModifierFlagShift | NSEventModifierFlagOption;
    const bool special = message.id == 251;
    press(special ? u'V' : u'v', NSEventModifierFlagCommand | (special ? kSpecial : 0));
    ++reached["pastes"];
  }

  /// A text that its message must agree with.
  struct Taken {
    std::size_t client;
    SessionModel before, after;
  };
  std::optional<Taken> taken_;
  bool textsCome_ = false;                 ///< of the main application
  std::optional<std::size_t> lastClient_;  ///< of the latest event: fixes go there
  std::optional<std::pair<std::uint32_t, std::u16string>> parked_;
  std::size_t named_ = 0;      ///< the session that the record names
  std::uint64_t lastKey_ = 0;  ///< nanoseconds
};

}  // namespace quorvane::model
