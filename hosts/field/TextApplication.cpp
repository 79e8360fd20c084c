#include "hosts/field/TextApplication.h"

#include <exception>
#include <utility>

#include "hosts/keyboard/SpecialKeys.h"

namespace quorvane::field {
namespace {

constexpr std::size_t kErrorsKept = 100;

std::u16string toUtf16(char32_t character) {
  if (character < 0x10000) return {static_cast<char16_t>(character)};
  const char32_t offset = character - 0x10000;
  return {static_cast<char16_t>(0xD800 + (offset >> 10)),
          static_cast<char16_t>(0xDC00 + (offset & 0x3FF))};
}

bool isMouse(NSEventType type) {
  return type == NSEventType::LeftMouseDown || type == NSEventType::LeftMouseUp ||
         type == NSEventType::OtherMouseDown || type == NSEventType::OtherMouseUp;
}

std::uint32_t carbonKind(const NSEvent& event, const Delivery& how) {
  constexpr std::uint32_t kEventMouseUp = 2;
  switch (event.type) {
    case NSEventType::KeyDown:
      return how.repeat ? kEventRawKeyRepeat : kEventRawKeyDown;
    case NSEventType::KeyUp:
      return kEventRawKeyUp;
    case NSEventType::FlagsChanged:
      return kEventRawKeyModifiersChanged;
    case NSEventType::LeftMouseDown:
    case NSEventType::OtherMouseDown:
      return kEventMouseDown;
    case NSEventType::LeftMouseUp:
    case NSEventType::OtherMouseUp:
      break;
  }
  return kEventMouseUp;
}

}  // namespace

/// One event on its way through the controller. Events may be nested; what a nested one changed is
/// its own affair.
struct TextApplication::Progress {
  Progress(TextApplication& owner, Document& target)
      : application(owner),
        document(target),
        outer(owner.progress_),
        changesBefore(target.clientChanges()),
        outerChangesBefore(outer ? outer->document.clientChanges() : 0) {
    owner.progress_ = this;
  }
  ~Progress() {
    application.progress_ = outer;
    if (outer) outer->nestedChanges += outer->document.clientChanges() - outerChangesBefore;
  }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  [[nodiscard]] bool changed() const {
    return document.clientChanges() - changesBefore > nestedChanges;
  }
  void ownTextFollows() {
    changesBefore = document.clientChanges();
    nestedChanges = 0;
  }

  TextApplication& application;
  Document& document;
  Progress* outer;
  std::uint64_t changesBefore;
  std::uint64_t outerChangesBefore;
  std::uint64_t nestedChanges = 0;
  std::vector<std::string> calls;
};

std::string_view describe(Outcome outcome) {
  switch (outcome) {
    case Outcome::Consumed:
      return "consumed";
    case Outcome::PassedOn:
      return "passed on";
    case Outcome::PassedAfterError:
      return "passed on after an error";
    case Outcome::ConsumedAfterError:
      break;
  }
  return "consumed after an error";
}

TextApplication::TextApplication(Clock& clock, LogSink& log, EventQueue& queue)
    : clock_(clock), log_(log), queue_(queue) {}

void TextApplication::setController(IMKInputController* controller) {
  controller_ = controller;
  askRecognizedEvents();
}

void TextApplication::callController(const std::function<void(IMKInputController&)>& call) {
  if (controller_) guarded([&] { call(*controller_); });
  deliverPosted();
}

Document& TextApplication::addDocument() {
  Document& document = *documents_.emplace_back(std::make_unique<Document>(clipboard_));
  document.observer = [this, &document](const ClientCall& call) { noteClientCall(document, call); };
  return document;
}

void TextApplication::focus(Document* document) {
  if (document == focused_) return;
  Document* const old = std::exchange(focused_, document);
  if (old && controller_) guarded([&] { controller_->deactivateServer(old); });
  if (old) old->unmark();
  if (document && controller_) guarded([&] { controller_->activateServer(document); });
  askRecognizedEvents();
  deliverPosted();
}

Outcome TextApplication::press(std::u16string_view characters, std::uint16_t keyCode,
                               std::uint32_t modifierFlags, std::optional<double> time) {
  NSEvent event{NSEventType::KeyDown, modifierFlags, keyCode, std::u16string(characters), nullptr};
  Delivery how = delivery;
  how.time = time ? time : clock_.GetCurrentEventTime();
  const Outcome outcome = deliver(event, how);
  event.type = NSEventType::KeyUp;
  deliver(event, how);
  return outcome;
}

Outcome TextApplication::type(char32_t character, std::uint32_t modifierFlags,
                              std::optional<double> time) {
  if (character == U'\n') character = U'\r';
  const keyboard::Key key = queue_.keyboard().keyForCharacter(character).value_or(keyboard::Key{});
  if (key.shift) modifierFlags |= NSEventModifierFlagShift;
  if (key.option) modifierFlags |= NSEventModifierFlagOption;
  if (key.function) modifierFlags |= NSEventModifierFlagFunction;
  return press(toUtf16(character), key.keyCode, modifierFlags, time);
}

Outcome TextApplication::click(std::uint64_t index) {
  NSEvent event{NSEventType::LeftMouseDown, 0, 0, {}, nullptr};
  clickIndex_ = index;
  const Outcome outcome = deliver(event);
  clickIndex_.reset();
  event.type = NSEventType::LeftMouseUp;
  deliver(event);
  return outcome;
}

Outcome TextApplication::deliver(const NSEvent& event, const Delivery& how) {
  const Outcome outcome = handle(event, how, false);
  deliverPosted();
  return outcome;
}

void TextApplication::deliverPosted() {
  if (delivering()) return;
  for (std::size_t delivered = 0; delivered < kPostedEventLimit; ++delivered) {
    const std::optional<NSEvent> event = queue_.take();
    if (!event) return;
    handle(*event, delivery, true);
  }
  if (queue_.size() == 0) return;
  recordError("too many posted events: " + std::to_string(queue_.size()) + " dropped");
  queue_.clear();
}

Outcome TextApplication::handle(const NSEvent& event, const Delivery& how, bool posted) {
  Document* const document = focused_;
  if (!document) return Outcome::PassedOn;
  modifiers_ = keyboard::classicModifiers(event.modifierFlags);
  if (!posted) noteHeldKey(event);
  Progress progress(*this, *document);
  const Outcome outcome = offer(event, how, progress);
  if (outcome == Outcome::PassedOn || outcome == Outcome::PassedAfterError) {
    passOn(event, *document);
  }
  if (trace) trace({event, outcome, progress.calls, posted});
  return outcome;
}

void TextApplication::noteHeldKey(const NSEvent& event) {
  const std::uint32_t modifier = keyboard::modifierFlagOf(event.keyCode);
  const bool down = event.type == NSEventType::FlagsChanged ? (event.modifierFlags & modifier) != 0
                                                            : event.type == NSEventType::KeyDown;
  const std::size_t byte = event.keyCode >> 3;
  if (isMouse(event.type) || byte >= heldKeys_.size()) return;
  const auto bit = static_cast<std::uint8_t>(1U << (event.keyCode & 7U));
  heldKeys_[byte] =
      static_cast<std::uint8_t>(down ? heldKeys_[byte] | bit : heldKeys_[byte] & ~bit);
}

Outcome TextApplication::offer(NSEvent event, const Delivery& how, Progress& progress) {
  const bool wanted = (recognizedEvents_ >> static_cast<std::uint32_t>(event.type) & 1) != 0;
  if (!controller_ || !wanted) return Outcome::PassedOn;
  const CarbonEvent carbon = carbonEvent(event, how);
  if (how.withEventRef && !event.eventRef) event.eventRef = &carbon;
  bool consumed = false;
  if (guarded([&] {
        consumed = controller_->handleEvent(event, &progress.document) ||
                   (takeDeclined && takeDeclined(event));
      })) {
    return consumed ? Outcome::Consumed : Outcome::PassedOn;
  }
  return progress.changed() ? Outcome::ConsumedAfterError : Outcome::PassedAfterError;
}

void TextApplication::passOn(const NSEvent& event, Document& document) {
  const bool marked = document.markedRange().has_value();
  document.applyKey(event);
  if (event.type == NSEventType::LeftMouseDown && clickIndex_) document.select({*clickIndex_, 0});
  const bool ended = marked && !document.markedRange();
  if (ended && controller_) guarded([&] { controller_->commitComposition(nullptr); });
}

void TextApplication::ownTextFollows() {
  if (progress_) progress_->ownTextFollows();
}

CarbonEvent TextApplication::carbonEvent(const NSEvent& event, const Delivery& how) {
  CarbonEvent carbon;
  carbon.kind = carbonKind(event, how);
  carbon.time = how.time ? *how.time : clock_.GetCurrentEventTime();
  carbon.kmod = keyboard::classicModifiers(event.modifierFlags);
  if (isMouse(event.type)) {
    carbon.eventClass = kEventClassMouse;
    carbon.mloc = HIPoint{};
    return carbon;
  }
  carbon.eventClass = kEventClassKeyboard;
  const char16_t first = event.characters.empty() ? u'\0' : event.characters.front();
  carbon.kchr = first < 0x80 ? static_cast<std::uint8_t>(first) : std::uint8_t{0};
  carbon.kcod = event.keyCode;
  return carbon;
}

template <class Call>
bool TextApplication::guarded(const Call& call) {
  try {
    call();
    return true;
  } catch (const std::exception& error) {
    recordError(std::string("the input method threw: ") + error.what());
  } catch (...) {
    recordError("the input method threw something unknown");
  }
  return false;
}

void TextApplication::askRecognizedEvents() {
  recognizedEvents_ = 0;
  if (!controller_ || !focused_) return;
  guarded([&] { recognizedEvents_ = controller_->recognizedEvents(focused_); });
}

void TextApplication::noteClientCall(const Document& document, const ClientCall& call) {
  if (trace && progress_) progress_->calls.push_back(describe(call));
  if (onClientCall) onClientCall(document, call);
}

void TextApplication::recordError(std::string message) {
  if (log_.enabled) log_.writeLine("* * * " + message);
  if (errors_.size() == kErrorsKept) errors_.erase(errors_.begin());
  errors_.push_back(std::move(message));
}

}  // namespace quorvane::field
