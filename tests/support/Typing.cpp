#include "tests/support/Typing.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "src/base/BigEndian.h"
#include "src/base/Modifiers.h"
#include "src/base/Text.h"
#include "src/bridge/SharedLayout.h"
#include "src/menu/CurrentAppFlags.h"
#include "src/menu/PendingCommand.h"
#include "tests/support/Law.h"
#include "tests/support/World.h"
#include "tools/parameters/UseSwitches.h"

namespace quorvane::fuzz {
namespace {

constexpr int kMostSteps = 400;
constexpr std::u16string_view kMarks = u"*^~";  // by fixes, and the last by words
constexpr char16_t kWordMark = u'~';
constexpr std::array<std::string_view, 7> kWords{"a~", "a~~", "e~", "h~", "h~~", "t~", "t~~"};

/// Of the menu, by shortcuts and messages.
constexpr std::array<FourCharCode, 16> kMenuCommands{
    "CkAl"_4cc, "CkAl"_4cc, "CkMk"_4cc, "CkSp"_4cc, "CkRd"_4cc, "LkUp"_4cc, "RMsp"_4cc, "DaTs"_4cc,
    "Tacy"_4cc, "Tacr"_4cc, "Timc"_4cc, "GtAb"_4cc, "ShSg"_4cc, "GpMu"_4cc, 2001,       3001};
constexpr std::uint32_t kShortcutFlags =
    NSEventModifierFlagCommand | NSEventModifierFlagOption | NSEventModifierFlagControl;

/// What was typed of a text: without marks, capitals and smart characters.
std::u16string typedOf(std::u16string_view text) {
  std::u16string typed;
  for (const char16_t unit : text) {
    if (kMarks.find(unit) != std::u16string_view::npos) continue;
    if (unit == u'—') typed += u'-';
    const std::size_t smart = std::u16string_view(u"—–“”‘’").find(unit);
    const bool capital = unit >= u'A' && unit <= u'Z';
    const auto plain = static_cast<char16_t>(capital ? unit + 32 : unit);
    typed += smart != std::u16string_view::npos ? u"--\"\"''"[smart] : plain;
  }
  return typed;
}

/// A text field as it would be without the input method: a marked word is plain text, as typed, and
/// what is selected, the person hasn't selected: it leaves the caret where it was.
std::u16string afterKey(const field::Document& document, std::size_t caret, const NSEvent& key) {
  field::Document plain;
  std::u16string text = document.text();
  NSRange selection = document.selection();
  if (const auto marked = document.markedRange()) {
    std::u16string word = text.substr(marked->location, marked->length);
    std::erase(word, kWordMark);
    text.replace(marked->location, marked->length, word);
    selection = {marked->location + word.size(), 0};
  }
  if (!document.markedRange() && selection.length != 0) selection = {caret, 0};
  plain.setText(text);
  plain.select(selection);
  plain.applyKey(key);
  return plain.text();
}

class Typing {
 public:
  Typing(Bytes bytes, bool completion) : input_(bytes) {
    setParameters(completion);
    watchCaret();
    main_.server.answer = [this](std::int32_t command, const CFData&) { return told(command); };
    main_.vanish();
    main_.launch();
    for (const unsigned bit : {13U, 14U, 15U, 16U, 17U, 19U, 20U, 31U}) {
      main_.answer(bit, {.afterTicks = 0, .action = [this] { restore(); }});
    }
    clipboard().copy(kMarks.substr(0, 1), field::CopiedFor::Person);
    turn();
    main_.writeCorrectedText("");  // it is one that sends a text with each fix
    main_.sendFix(0, "");
    turn();
    for (int step = 0; step < kMostSteps && !input_.empty() && !subject_.ended(); ++step) {
      input_.below(4) == 0 ? meddle() : type();
    }
    if (honest_) settle();
  }

  [[nodiscard]] std::uint64_t keys() const { return keys_; }

 private:
  using Act = void (Typing::*)();

  void setParameters(bool completion) {
    const std::uint32_t word = 0x11833 | (completion ? kCompletionFlag : 0);
    other_ =
        subject_.host.processes.add({{}, 0, "Other", "OTHR"_4cc, "APPL"_4cc, 0, "other", false});
    main_.appFlagStatus = word;
    parameters::changeParameterFile(subject_.host.files, [](auto& file) {
      parameters::setSwitches(file, {"OTHR"_4cc, "other"}, 0x1033);
      for (std::int16_t key = 0; key < static_cast<std::int16_t>(kMenuCommands.size()); ++key) {
        const FourCharCode command = kMenuCommands[static_cast<std::size_t>(key)];
        parameters::setShortcut(file, {command, cmdKey | optionKey | controlKey, key});
      }
    });
    parameters::useSwitches(subject_.host, subject_.instance, word);
  }

  /// Where it was before all was selected: whoever types finds it there again.
  void watchCaret() {
    const auto note = [this] {
      const auto [location, length] = subject_.document.selection();
      if (length == 0) caret_ = location;
    };
    auto& text = subject_.host.text;
    text.trace = [note, judge = text.trace](const auto& report) { judge(report), note(); };
    text.onClientCall = [note, count = text.onClientCall](const auto& call) {
      count(call), note();
    };
  }

  /// Checks the clipboard's text and pastes it back with a mark; without one it takes it back.
  std::optional<CFData> told(std::int32_t command) {
    constexpr std::array<std::int32_t, 8> kOfCopies{2, 6, 7, 45, 25, 26, 37, 42};
    const auto which = std::ranges::find(kOfCopies, command) - kOfCopies.begin();
    const bool checks = which < 4 && subject_.document.selection().length != 0;
    if (checks && clipboard().text() == text() && main_.field(ToolCRecPtr_ClipState) == 0) {
      clipboard().copy(text() + kMarks.front(), field::CopiedFor::Person);
      main_.setField(ToolCRecPtr_ClipState, 1);
      main_.sendMessage(250, CFData{0, 0, 0x10, 0x93});
    } else if (which < 8) {
      restore();
    }
    return CFData{};
  }
  /// Not while a paste is on its way.
  void restore() {
    if (main_.field(ToolCRecPtr_ClipState) == 0)
      clipboard().copy(kMarks.substr(0, 1), field::CopiedFor::Person);
  }

  void settle() {
    int left = 40;
    do {
      pass(3'000'000'000);
    } while (isCommandWaiting(subject_.instance) && --left > 0);
    require(left > 0, "a command that waits runs in the end");
    subject_.host.processes.setFront(other_);  // a notice comes for a change only
    subject_.host.processes.setFront(memory::MemoryProcesses::editor());
    turn();
    subject_.press({NSEventType::KeyDown, NSEventModifierFlagCommand, 40, u"k", {}});
    for (int keys = 2; keys > 0; --keys) subject_.press({NSEventType::KeyDown, 0, 49, u" ", {}});
    pass(1'000'000'000);
    require(clipboard().text() == kMarks.substr(0, 1), "a check takes the clipboard back");
  }
  void pass(std::uint64_t nanoseconds) {
    subject_.disturb();
    subject_.host.wait(nanoseconds);
    turn();
  }

  // Somebody types.

  void type() {
    constexpr std::u16string_view kKeys =
        u"aehtaehtaehtAT    ..,'\"--\r\b\b\x1B\t12\x1C\x1D\x1E\x1F\x01\x7Fé";
    const char16_t character = kKeys[input_.below(kKeys.size())];
    NSEvent key{NSEventType::KeyDown, 0, 0, {character}, nullptr};
    if (const auto found = subject_.host.queue.keyboard().keyForCharacter(character)) {
      key.keyCode = found->keyCode;
      if (found->function) key.modifierFlags = NSEventModifierFlagFunction;
    }
    const std::u16string before = typedOf(text());
    const std::u16string wanted = typedOf(afterKey(subject_.document, caret_, key));
    // A text that comes in while a command runs may be what is erased.
    const bool overtaken = subject_.host.messagePorts.pending() != 0 && isEraser(character);
    const bool mayStay = overtaken || mayBeTaken(key.characters.front());
    subject_.press(key);
    ++keys_;
    check(wanted, mayStay ? before : wanted);
  }

  static bool isEraser(char16_t character) { return character == 8 || character == 0x7F; }
  /// It may be for the main application's window, or for the word that completion holds.
  [[nodiscard]] bool mayBeTaken(char16_t character) const {
    const auto isOneOf = [&](std::u16string_view keys) {
      return keys.find(character) != keys.npos;
    };
    const bool composing = subject_.document.markedRange().has_value();
    return ((windowIsUp() || windowLeft_) && isOneOf(u"12\t")) ||
           (composing && isOneOf(u"12\r\x7F"));
  }

  [[nodiscard]] const std::u16string& text() const { return subject_.document.text(); }
  [[nodiscard]] field::Clipboard& clipboard() { return subject_.host.text.clipboard(); }

  void check(const std::u16string& wanted, const std::u16string& orElse) {
    const std::u16string found = typedOf(text());
    if (found == wanted || found == orElse) return;
    require(false,
            "typed characters stand as typed: " + toUtf8(text()) + " and not " + toUtf8(wanted));
  }

  // The world around.

  void meddle() {
    static constexpr std::array<Act, 24> kActs{
        &Typing::fix,   &Typing::fix,   &Typing::fix,        &Typing::insertMark,
        &Typing::click, &Typing::wait,  &Typing::wait,       &Typing::turn,
        &Typing::turn,  &Typing::menu,  &Typing::menu,       &Typing::shortcut,
        &Typing::order, &Typing::front, &Typing::skip,       &Typing::file,
        &Typing::lie,   &Typing::gate,  &Typing::answerLate, &Typing::answerLate,
        &Typing::stall, &Typing::turn,  &Typing::comeOrGo,   &Typing::gate};
    constexpr std::size_t kHonest = 16;
    const std::u16string before = typedOf(text());
    subject_.disturb();
    (this->*kActs[input_.below(honest_ ? kHonest : kActs.size())])();
    subject_.checkLaw();
    check(before, before);
  }

  void click() { subject_.host.text.click(input_.byte()); }
  void turn() { subject_.host.runPending(); }
  void wait() { subject_.host.wait(input_.byte() * memory::kNanosecondsPerTick); }
  /// During the next key or wait.
  void skip() {
    subject_.host.journal.beforeCall(
        input_.byte(), [this, ticks = input_.byte()] { subject_.host.clock.advanceTicks(ticks); });
  }

  void menu() { chooseFromMenu(subject_, input_); }
  void shortcut() {
    const auto code = static_cast<std::uint16_t>(input_.below(kMenuCommands.size()));
    subject_.press({NSEventType::KeyDown, kShortcutFlags, code, u"q", nullptr});
  }
  void order() {
    const std::uint32_t command = input_.oneOf(kMenuCommands);
    CFData data(sizeof command);
    putBigEndian(data, 0, command);
    main_.sendMessage(230, data);
  }
  void front() {
    const std::array<ProcessSerialNumber, 4> kFronts{
        memory::MemoryProcesses::editor(), other_, main_.psn(), {}};
    subject_.host.processes.setFront(input_.oneOf(kFronts), notice());
  }
  void file() { putUserFile(subject_, input_); }

  /// A fix of what was published, now or a while ago: its last letters with a mark before them.
  void fix() {
    const std::uint8_t manner = input_.byte();
    const std::string now = main_.published().text;
    std::string known = (manner & 3) == 0 ? known_ : now;
    if ((manner & 12) != 0) known_ = now;
    std::size_t count = std::min<std::size_t>(input_.below(8), known.size());
    // What fits before the caret must have its letters: else it were an order to write others.
    if (now.starts_with(known.substr(0, known.size() - count))) known = now;
    count = std::min(count, known.size());
    while (!std::all_of(known.end() - count, known.end(), [](char c) { return c >= ' '; })) --count;
    const std::string fixed = mark() + known.substr(known.size() - count);
    main_.writeCorrectedText(known.substr(0, known.size() - count) + fixed);
    // With none to replace it would be an order to insert letters.
    const bool lies = (manner & 0x70) == 0;
    const auto claimed = lies ? std::max(1U, input_.number()) : static_cast<std::uint32_t>(count);
    if ((manner & 0x80) == 0 || input_.flag()) main_.sendFix(claimed, fixed);
  }
  /// No two that follow each other are alike: else the text of one fix and the message of another
  /// made an order.
  std::string mark() {
    std::string text;
    for (int bit = 0; bit < 5; ++bit) text += (fixes_ >> bit & 1) != 0 ? '*' : '^';
    ++fixes_;
    return text;
  }
  void answerLate() {
    memory::Answer given;
    const std::uint8_t manner = input_.byte();
    given.afterTicks = manner % 16;
    given.evenIfTakenBack = (manner & 16) != 0;
    if ((manner & 96) != 0)
      given.action = [this] {
        fix();
        subject_.disturb();
      };
    main_.answerScan(given);
  }
  /// Any number in any field; only what it asks for by name is an order.
  void lie() {
    main_.setField(static_cast<unsigned>(input_.below(77)), input_.number());
    if (input_.flag()) lieAboutText(subject_, input_);
  }
  void gate() {
    constexpr std::array<std::pair<unsigned, std::uint32_t>, 8> kGates{
        {{6, 2}, {9, 2}, {19, 9}, {22, 2}, {27, 3}, {31, 3}, {38, 8}, {74, 2}}};
    const auto [field, limit] = input_.oneOf(kGates);
    main_.setField(field, static_cast<std::uint32_t>(input_.below(limit)));
    if (field == ToolCRecPtr_isDocWindowOpen) main_.setField(12, "WRTR"_4cc);
  }
  void insertMark() { main_.sendFix(0, mark()); }
  void stall() {
    auto* const server = subject_.host.messagePorts.server(main_.kServerPort);
    if (server == nullptr) return;
    server->silent = input_.flag();
    server->full = input_.flag();
  }
  [[nodiscard]] bool windowIsUp() const { return main_.field(ToolCRecPtr_isDocWindowOpen) != 0; }
  void comeOrGo() {
    windowLeft_ |= windowIsUp();
    if (input_.flag()) return main_.launch(notice());
    main_.vanish(notice(),
                 input_.flag() ? memory::SegmentFate::Kept : memory::SegmentFate::Removed);
  }
  memory::Notice notice() {
    return input_.flag() ? memory::Notice::Missed : memory::Notice::Queued;
  }

  Subject subject_{kWords};
  memory::MemoryMainApplication& main_ = subject_.host.mainApplication;
  Input input_;
  bool honest_ = input_.flag();
  ProcessSerialNumber other_;
  std::size_t caret_ = 0;  ///< when last nothing was selected
  std::uint64_t keys_ = 0;
  unsigned fixes_ = 0;
  bool windowLeft_ = false;  ///< one was up when its record went: the input method may not know
  std::string known_;        ///< a text that was published earlier
};

}  // namespace

std::uint64_t typeBesideALiar(Bytes bytes, bool completion) {
  return Typing(bytes, completion).keys();
}

}  // namespace quorvane::fuzz
