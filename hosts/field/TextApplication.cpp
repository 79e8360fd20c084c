#include "hosts/field/TextApplication.h"

#include <algorithm>
#include <utility>

#include "src/base/Modifiers.h"

namespace quorvane::field {
namespace {

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

/// One event on its way, from the controller to the document.
struct TextApplication::Progress {
  explicit Progress(TextApplication& owner)
      : application(owner), outer(std::exchange(owner.progress_, this)) {}
  ~Progress() { application.progress_ = outer; }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  TextApplication& application;
  Progress* outer;
  std::vector<std::string> calls;
};

TextApplication::TextApplication(Clock& clock, LogSink& log, EventQueue& queue,
                                 std::shared_ptr<Clipboard> clipboard)
    : clock_(clock), queue_(queue), boundary_(log), clipboard_(std::move(clipboard)) {}

void TextApplication::setController(IMKInputController* controller) {
  boundary_.setController(controller);
  askRecognizedEvents();
}

void TextApplication::callController(const std::function<void(IMKInputController&)>& call) {
  boundary_.call(call);
  deliverPosted();
}

Document& TextApplication::addDocument(std::unique_ptr<Document> added) {
  Document& document = *documents_.emplace_back(std::move(added));
  Client& client = *clients_.emplace_back(std::make_unique<Client>(document));
  client.observer = [this](const ClientCall& call) { noteClientCall(call); };
  return document;
}

Client& TextApplication::clientOf(const Document& document) const {
  const auto found = std::ranges::find(documents_, &document, &std::unique_ptr<Document>::get);
  return *clients_.at(static_cast<std::size_t>(found - documents_.begin()));
}

void TextApplication::focus(Document* document) {
  if (document == focused_) return;
  Document* const old = std::exchange(focused_, document);
  if (old) boundary_.call([&](auto& controller) { controller.deactivateServer(&clientOf(*old)); });
  if (old) old->unmark();
  if (document) boundary_.call([&](auto& it) { it.activateServer(&clientOf(*document)); });
  askRecognizedEvents();
  deliverPosted();
}

Outcome TextApplication::press(std::u16string_view characters, std::uint16_t keyCode,
                               std::uint32_t modifierFlags, std::optional<Seconds> time) {
  NSEvent event{NSEventType::KeyDown, modifierFlags, keyCode, std::u16string(characters), nullptr};
  Delivery how = delivery;
  how.time = time ? time : clock_.GetCurrentEventTime();
  const Outcome outcome = deliver(event, how);
  event.type = NSEventType::KeyUp;
  deliver(event, how);
  return outcome;
}

Outcome TextApplication::type(char32_t character, std::uint32_t modifierFlags,
                              std::optional<Seconds> time) {
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
  boundary_.recordError("too many posted events: " + std::to_string(queue_.size()) + " dropped");
  queue_.clear();
}

Outcome TextApplication::handle(const NSEvent& event, const Delivery& how, bool posted) {
  Document* const document = focused_;
  if (!document) return Outcome::PassedOn;
  modifiers_ = classicModifiers(event.modifierFlags);
  if (!posted) noteHeldKey(event);
  Progress progress(*this);
  EventWatch* const told = posted ? nullptr : watch;
  if (told != nullptr) told->begins(event);
  const Outcome outcome = offer(event, how, clientOf(*document));
  if (told != nullptr) told->ends(event, outcome);
  if (outcome == Outcome::PassedOn || outcome == Outcome::PassedAfterError) {
    passOn(event, *document, posted ? CopiedFor::Command : CopiedFor::Person);
  }
  if (trace) trace({event, outcome, progress.calls, posted});
  return outcome;
}

void TextApplication::noteHeldKey(const NSEvent& event) {
  const std::uint32_t modifier = modifierFlagOf(event.keyCode);
  const bool down = event.type == NSEventType::FlagsChanged ? (event.modifierFlags & modifier) != 0
                                                            : event.type == NSEventType::KeyDown;
  const std::size_t byte = event.keyCode >> 3;
  if (isMouse(event.type) || byte >= heldKeys_.size()) return;
  const auto bit = static_cast<std::uint8_t>(1U << (event.keyCode & 7U));
  heldKeys_[byte] =
      static_cast<std::uint8_t>(down ? heldKeys_[byte] | bit : heldKeys_[byte] & ~bit);
}

Outcome TextApplication::offer(NSEvent event, const Delivery& how, Client& client) {
  const bool wanted = (recognizedEvents_ >> static_cast<std::uint32_t>(event.type) & 1) != 0;
  if (!wanted) return Outcome::PassedOn;
  const CarbonEvent carbon = carbonEvent(event, how);
  if (how.withEventRef && !event.eventRef) event.eventRef = &carbon;
  return boundary_.offer(event, client);
}

void TextApplication::passOn(const NSEvent& event, Document& document, CopiedFor whom) {
  const bool marked = document.markedRange().has_value();
  document.applyKey(event, whom);
  if (event.type == NSEventType::LeftMouseDown && clickIndex_) document.select({*clickIndex_, 0});
  const bool ended = marked && !document.markedRange();
  if (ended) boundary_.call([](auto& controller) { controller.commitComposition(nullptr); });
}

CarbonEvent TextApplication::carbonEvent(const NSEvent& event, const Delivery& how) {
  CarbonEvent carbon;
  carbon.kind = carbonKind(event, how);
  carbon.time = how.time ? *how.time : clock_.GetCurrentEventTime();
  carbon.kmod = classicModifiers(event.modifierFlags);
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

void TextApplication::askRecognizedEvents() {
  recognizedEvents_ = 0;
  if (!focused_) return;
  boundary_.call([&](auto& controller) {
    recognizedEvents_ = controller.recognizedEvents(&clientOf(*focused_));
  });
}

void TextApplication::noteClientCall(const ClientCall& call) {
  if (trace && progress_) progress_->calls.push_back(describe(call));
  if (onClientCall) onClientCall(call);
}

}  // namespace quorvane::field
