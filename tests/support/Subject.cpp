#include "tests/support/Subject.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "src/base/Modifiers.h"
#include "src/bridge/Presence.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/QBIMMessageSend.h"
#include "src/bridge/SpellCheckCache.h"
#include "src/menu/MenuShortcuts.h"
#include "src/session/CommandSelection.h"
#include "src/shell/QBIM_IMK_Start.h"
#include "tests/support/Law.h"

namespace quorvane::fuzz {
namespace {

constexpr std::uint64_t kClockStep = 4'000'000;  // a quarter of a tick: waits spin less
constexpr std::uint32_t kToolRecord = 880;
constexpr std::size_t kFields = 68;
constexpr std::array<std::size_t, 3> kBusyFields{16, 22, 54};
constexpr std::uint32_t kScanBit = 0x10000;
constexpr std::size_t kErrorsKept = 100;

/// What smart characters may put in the place of a key: quotes and dashes are inserted, a capital
/// is pressed.
std::u16string replacementsOf(const NSEvent& event) {
  constexpr std::uint32_t kNotTyping =
      NSEventModifierFlagCommand | NSEventModifierFlagControl | NSEventModifierFlagFunction;
  const bool typed = event.type == NSEventType::KeyDown && (event.modifierFlags & kNotTyping) == 0;
  const char16_t key = typed && !event.characters.empty() ? event.characters.front() : u'\0';
  if (key == u'"') return u"“”";
  if (key == u'\'') return u"‘’";
  if (key == u'-') return u"—–-";
  return key >= u'a' && key <= u'z' ? std::u16string{static_cast<char16_t>(key - 32)} : u"";
}

bool isCapital(std::u16string_view text) {
  return !text.empty() && text.front() >= u'A' && text.front() <= u'Z';
}

/// The keys, up and down, that windows of the main application take.
bool mayBeForWindow(const NSEvent& event) {
  constexpr std::u16string_view kKeys = u"0123456789\t\x1F\x1B\x01";
  const bool isKey = event.type == NSEventType::KeyDown || event.type == NSEventType::KeyUp;
  return event.type == NSEventType::FlagsChanged ||
         (isKey && !event.characters.empty() &&
          kKeys.find(event.characters.front()) != std::u16string_view::npos);
}

bool mayBeShortcut(Instance& instance, const NSEvent& event) {
  const bool known = instance.state<MenuShortcutsState>().APPQORVMENUKEYSHAND != nullptr;
  return known && (classicModifiers(event.modifierFlags) & ~(shiftKey | alphaLock)) != 0;
}

}  // namespace

struct Subject::Sight {
  std::u16string text;
  NSRange selection;
  bool composing = false;  ///< a word is being typed, or what was marked of it is still marked
  bool completionIsOn = false;
  std::uint64_t clientChanges = 0;
  std::uint64_t waiting = 0;  ///< texts and messages that may come in with the event
  bool firstKeyIsOurs = false;
  bool guarded = false;  ///< a command has selected what is selected
  std::optional<int> toolRecord;
  bool attached = false;
  std::array<std::uint32_t, kBusyFields.size()> busy{};
};

class Subject::Gate : public InputController {
 public:
  explicit Gate(Subject& subject) : InputController(subject.instance), subject_(subject) {}

  bool handleEvent(const NSEvent& event, IMKTextInput* client) override {
    require(!inside_, "an event waits for the end of the one before it");
    const FlagGuard inside(inside_);
    *subject_.before_ = subject_.look();
    return InputController::handleEvent(event, client);
  }

 private:
  Subject& subject_;
  bool inside_ = false;
};

Subject::Subject(std::span<const std::string_view> words)
    : StartedInputMethod(true, words),
      before_(std::make_unique<Sight>()),
      gate_(std::make_unique<Gate>(*this)) {
  host.journal.setRecording(false);
  host.clock.step = kClockStep;
  host.log.limit = 4;
  host.log.showPrivate = true;
  host.console.limit = 4;
  host.text.setController(gate_.get());
  host.text.trace = [this](const field::EventReport& report) { judge(report); };
  // What is posted to a process that has just left the front would be lost with it.
  host.queue.reaches = [](const ProcessSerialNumber&) { return true; };
}

Subject::~Subject() = default;

Subject::Sight Subject::look() {
  Sight sight;
  if (const field::Document* focused = host.text.focused(); focused != nullptr) {
    sight.text = focused->text();
    sight.selection = focused->selection();
    sight.composing = focused->markedRange().has_value();
    sight.clientChanges = focused->clientChanges();
  }
  const std::uint32_t switches = instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
  sight.composing |= !gate_->originalBuffer().empty() || !gate_->composedBuffer().empty();
  sight.completionIsOn = (switches & kCompletionFlag) != 0;
  const auto& commit = instance.state<CommitState>();
  sight.waiting = host.messagePorts.pending() + (commit.stringbuffer ? 1 : 0) +
                  (commit.stringbufferHandle.empty() ? 0 : 1);
  sight.firstKeyIsOurs = instance.state<ControllerState>().KEYED_INITED_FLAG != 0;
  sight.guarded = !instance.state<CommandSelectionState>().selections.empty();
  sight.toolRecord = host.sharedMemory.find(kToolRecord);
  sight.attached = host.sharedMemory.totalAttachments() != 0;
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
  disturbed_ = false;
  reports_ = 0;
  const field::Outcome outcome = host.text.deliver(event, how);
  require(reports_ == 1 && outcome_ == outcome, "an event has one outcome");
  require(!owedSurely_, "a capital that was pressed comes back");
  checkLaw();
}

void Subject::judge(const field::EventReport& report) {
  using field::Outcome;
  const Sight after = look();
  const bool completionIsOn = before_->completionIsOn || after.completionIsOn;
  const bool consumed =
      report.outcome == Outcome::Consumed || report.outcome == Outcome::ConsumedAfterError;
  const bool threw = report.outcome != Outcome::Consumed && report.outcome != Outcome::PassedOn;
  // Completion throws at what it can't use, and at a list for what it has marked already.
  require(!threw || completionIsOn, "handling an event throws nothing");
  require(!threw || !consumed || after.text != before_->text, "no failure eats a key");
  thrown_ += threw ? 1 : 0;
  if (report.posted) {
    judgePosted(report.event);
  } else {
    require(!owedSurely_, "what is posted comes before what is typed next");
    owed_.clear();
    ++reports_;
    outcome_ = report.outcome;
  }
  // While it is on, completion takes what it likes.
  const bool composing = before_->composing || after.composing || (consumed && completionIsOn);
  checkTaker(report.event, consumed, composing);
  if (!composing) checkDocument(report.event, consumed);
  checkToolRecord();
}

// Command keys are pressed for the main application; of other keys only capitals.
void Subject::judgePosted(const NSEvent& event) {
  const bool command = (event.modifierFlags & NSEventModifierFlagCommand) != 0;
  if (command || event.type != NSEventType::KeyDown) return;
  require(event.characters == owed_, "a capital takes the place of its letter");
  owed_.clear();
  owedSurely_ = false;
}

void Subject::checkTaker(const NSEvent& event, bool consumed, bool composing) {
  const bool ours = before_->firstKeyIsOurs && event.type == NSEventType::KeyDown;
  require(consumed || !ours, "the claimed key is consumed");
  if (!consumed || ours) return;
  const std::u16string replacements = replacementsOf(event);
  if (isCapital(replacements)) owed_ = replacements;
  if (composing || mayBeForWindow(event) || mayBeShortcut(instance, event)) return;
  require(!replacements.empty(), "only what has a taker is consumed");
  owedSurely_ = !owed_.empty();
}

// Where something waited for an event, it is there besides: then nobody knows what the text was.
void Subject::checkDocument(const NSEvent& event, bool consumed) {
  const field::Document& focused = *host.text.focused();
  const bool changed = focused.clientChanges() != before_->clientChanges;
  if (changed && (before_->waiting != 0 || before_->guarded || disturbed_)) return;
  const bool mayFail = host.textEncoding.convertFails || host.textEncoding.decodeFails;
  const std::u16string replacements = replacementsOf(event);
  if (changed) {
    require(consumed && isReplaced(event), "a consumed key changes a document by its replacement");
  } else if (consumed) {
    const bool inserts = !replacements.empty() && !isCapital(replacements);
    require(!inserts || before_->firstKeyIsOurs || mayFail, "what is consumed is replaced");
    require(focused.text() == before_->text, "a consumed key changes nothing itself");
  } else {
    require(focused.text() == afterPassing(event), "a passed key is applied once");
  }
}

std::u16string Subject::afterPassing(const NSEvent& event) {
  field::Document scratch(std::make_shared<field::MemoryClipboard>(host.text.clipboard().text()));
  scratch.setText(before_->text);
  scratch.select(before_->selection);
  scratch.applyKey(event);
  return scratch.text();
}

bool Subject::isReplaced(const NSEvent& event) const {
  const auto [location, length] = before_->selection;
  for (const char16_t unit : replacementsOf(event)) {
    for (const auto& [from, size] : {std::pair(location, length), {location - 1, 1}}) {
      if (from > before_->text.size()) continue;
      std::u16string expected = before_->text;
      if (host.text.focused()->text() == expected.replace(from, size, 1, unit)) return true;
    }
  }
  return false;
}

// A busy mark that somebody else had left may go; none of ours may stay.
void Subject::checkToolRecord() {
  const bool spelling = instance.state<SpellCheckState>().OPENGlobalTool_SpellCPtr != nullptr;
  require(host.sharedMemory.totalAttachments() <= (spelling ? 2 : 1),
          "only the tool record and that of the last spell check stay attached");
  // What can't be attached any more can't be put right: it was attached from before, or the main
  // application went during the event.
  if (disturbed_ || before_->attached || IsQUORVANEAPPRUNNING(instance) == 0) return;
  const Sight after = look();
  if (!after.toolRecord || after.toolRecord != before_->toolRecord) return;
  require(after.busy[0] == before_->busy[0], "a key leaves the server port as it was");
  require(after.busy[1] == 0 || after.busy[1] == before_->busy[1], "no busy mark is left");
  require((after.busy[2] & ~before_->busy[2] & kScanBit) == 0, "no scan stays asked for");
}

void Subject::checkLaw() {
  require(instance.state<ControllerState>().handleEvent_BUSY == 0, "event handling isn't busy");
  const auto& sending = instance.state<MessageSendState>();
  require(sending.TOOLCALLBUSY == 0 && sending.AEITEM_Process_active == 0, "sending isn't busy");
  require(!instance.state<StartState>().NoRecursion, "starting isn't busy");
  require(!instance.state<LaunchServerState>().launched_busy, "no launch is waited for");
  require(host.text.errors().size() == std::min<std::size_t>(thrown_, kErrorsKept),
          "the text field meets no other error");
  for (const auto& session : instance.state<SessionState>().records) {
    require(session->cursor <= session->length, "the cursor lies inside the text");
    require(session->length <= kSessionTextSize, "the text lies inside its buffer");
  }
}

}  // namespace quorvane::fuzz
