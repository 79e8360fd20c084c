#include "hosts/ibus/InputContexts.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace quorvane::ibus {
namespace {

constexpr std::size_t kMostContexts = 64;
constexpr std::uint32_t kSurroundingText = 1 << 5;

}  // namespace

bool isSecret(std::uint32_t purpose, std::uint32_t hints) {
  constexpr std::uint32_t kPassword = 8, kTerminal = 10, kPrivate = 1 << 11;
  return (purpose >= kPassword && purpose <= kTerminal) || (hints & kPrivate) != 0;
}

InputContexts::InputContexts(field::TextApplication& application, Wire& wire, Attendants attendants)
    : application_(application), wire_(wire), attendants_(std::move(attendants)) {}

void InputContexts::focusIn(std::string_view path, std::string_view client) {
  leave();
  if (client == "fake") return;
  focused_ = &contextOf(path, client);
  focused_->field.forget();
}

void InputContexts::focusOut() { leave(); }

void InputContexts::setContentType(std::uint32_t purpose, std::uint32_t hints) {
  secret_ = isSecret(purpose, hints);
  if (!secret_ || focused_ == nullptr) return;
  application_.focus(nullptr);
  focused_->field.forget();
}

void InputContexts::setCapabilities(std::uint32_t capabilities) {
  if (!isOpen()) return;
  if ((capabilities & kSurroundingText) == 0) focused_->field.tellNothing();
}

void InputContexts::setSurroundingText(CaretText text) {
  if (isOpen()) focused_->field.tell(std::move(text));
}

void InputContexts::setLine(const NSRect& line) {
  if (isOpen()) focused_->field.lineRectangle = line;
}

/// What it was marked becomes its own by itself.
void InputContexts::leave() {
  composer_.reset();
  pressed_.clear();
  consumed_.clear();
  behind_ = false;
  if (focused_ == nullptr) return;
  application_.focus(nullptr);
  std::exchange(focused_, nullptr)->field.forget();
}

/// Only at its first key: by then the kind of the field is known.
void InputContexts::enter() {
  attendants_.toFront(focused_->client);
  application_.focus(&focused_->field);
}

/// Of very many the one that was left first becomes another.
InputContexts::Context& InputContexts::contextOf(std::string_view path, std::string_view client) {
  auto found = std::ranges::find(contexts_, path, &Context::path);
  if (found == contexts_.end() && contexts_.size() == kMostContexts) {
    found = std::prev(contexts_.end());
    found->path = path;
  }
  if (found == contexts_.end()) {
    auto field = std::make_unique<TextField>(wire_, attendants_.session);
    contexts_.push_back({std::string(path), {}, *field});
    application_.addDocument(std::move(field));
    found = std::prev(contexts_.end());
  }
  found->client = client;
  contexts_.splice(contexts_.begin(), contexts_, found);
  return contexts_.front();
}

bool InputContexts::processKey(const Key& key) {
  if (!isOpen() || wire_.comesBack(key)) return false;
  const bool release = (key.state & kReleaseState) != 0;
  const auto composed = release ? std::nullopt : composer_.feed(key.keyval);
  const auto event = eventOf(key, composed ? &*composed : nullptr);
  const bool repeats = !release && !pressed_.insert(key.keycode).second;
  if (release) pressed_.erase(key.keycode);
  if (composed && composed->empty()) return false;
  if (!event) {
    if (release) return consumed_.erase(key.keycode) != 0;
    focused_->field.passUnseen(nullptr);
    return passOn(key, nullptr);
  }
  attendants_.keyBegins();
  enter();
  if (event->type == NSEventType::KeyDown) {
    const bool taken = press(*event, repeats);
    if (!taken) return passOn(key, &*event);
    consumed_.insert(key.keycode);
    return true;
  }
  application_.deliver(*event);
  settle();
  return consumed_.erase(key.keycode) != 0;
}

bool InputContexts::passOn(const Key& key, const NSEvent* event) {
  const bool taken = focused_->field.passOn(key, event);
  if (taken) consumed_.insert(key.keycode);
  return taken;
}

bool InputContexts::press(const NSEvent& event, bool repeats) {
  TextField& field = focused_->field;
  const Meeting meeting = field.meet(event);
  if (field.lags() && attendants_.completes()) {
    behind_ = true;
    field.passUnseen(&event);
    return false;
  }
  const bool dropped = noteDropped();
  if (meeting == Meeting::Elsewhere || dropped || behind_) startAfresh();
  behind_ = false;
  application_.deliver(event, {.repeat = repeats});
  attendants_.catchUp();
  const bool taken = field.settle(event);
  if (noteDropped()) startAfresh();
  return taken;
}

bool InputContexts::noteDropped() {
  const auto fault = focused_->field.takeDropped();
  if (!fault) return false;
  ++leftOut_[static_cast<std::size_t>(*fault)];
  attendants_.leftOut(*fault);
  return true;
}

/// As a click elsewhere would have it.
void InputContexts::startAfresh() {
  NSEvent event{.type = NSEventType::LeftMouseDown, .characters = {}};
  application_.deliver(event);
  event.type = NSEventType::LeftMouseUp;
  application_.deliver(event);
}

desktop::FieldKind InputContexts::kind() const {
  if (focused_ == nullptr) return desktop::FieldKind::None;
  if (secret_) return desktop::FieldKind::Secret;
  return focused_->field.tells() ? desktop::FieldKind::Told : desktop::FieldKind::Untold;
}

void InputContexts::settle() {
  if (isOpen()) focused_->field.settleBetweenKeys(attendants_.isQuiet);
}

}  // namespace quorvane::ibus
