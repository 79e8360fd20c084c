#include "hosts/ibus/PressedKeys.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <array>
#include <utility>

#include "hosts/x11/Keys.h"

namespace quorvane::ibus {
namespace {

using namespace std::chrono_literals;

constexpr auto kForPlayed = 600ms;

/// What clients call themselves, up to a colon, that take no chord that is forwarded.
constexpr auto kLettersAlone = std::to_array<std::string_view>({"gtk4-im"});

struct Modifier {
  std::uint32_t state;
  std::uint32_t keycode;
};
constexpr auto kModifiers = std::to_array<Modifier>(
    {{kControlState, KEY_LEFTCTRL}, {kShiftState, KEY_LEFTSHIFT}, {kAltGrState, KEY_RIGHTALT}});

bool takesLettersAlone(std::string_view client) {
  return std::ranges::count(kLettersAlone, client.substr(0, client.find(':'))) != 0;
}

bool isChord(const Key& key, char letter) {
  return (key.state & kControlState) != 0 && (key.keyval | 0x20) == static_cast<unsigned>(letter);
}

}  // namespace

PressedKeys::PressedKeys(Wire& wire, desktop::RunLoop& runLoop, PressedKeysParts parts)
    : wire_(wire),
      parts_(std::move(parts)),
      display_(x11::Display::open(runLoop)),
      selection_(display_ ? x11::Selection::open(*display_, runLoop) : nullptr) {
  if (selection_) clipboard_.emplace(runLoop, *selection_);
}

void PressedKeys::forward(const Key& key) {
  waiting_.push_back({key, std::string(parts_.field())});
  if (!busy_) next();
}

void PressedKeys::next() {
  while (!busy_ && !waiting_.empty()) {
    const Pressed first = std::move(waiting_.front());
    waiting_.pop_front();
    perform(first);
  }
}

void PressedKeys::goOn() {
  busy_ = false;
  next();
}

void PressedKeys::fail(std::string_view why) {
  parts_.failed(why);
  goOn();
}

void PressedKeys::perform(const Pressed& pressed) {
  const bool copies = isChord(pressed.key, 'c');
  if (!copies && !isChord(pressed.key, 'v')) {
    press(pressed);
  } else if (clipboard_ && clipboard_->awaitsPaste()) {
    parts_.failed("the client hasn't pasted yet what it was to");
  } else {
    copies ? copy(pressed) : paste(pressed);
  }
}

void PressedKeys::copy(const Pressed& pressed) {
  if (!clipboard_) return parts_.failed("the clipboard can't be read here");
  busy_ = true;
  copied_.reset();
  clipboard_->copy([this, pressed] { return press(pressed); },
                   [this, pressed](std::optional<std::string> text) {
                     if (!text || !parts_.copied(*text)) return fail("nothing was copied");
                     copied_ = {pressed, std::move(*text)};
                     goOn();
                   });
}

void PressedKeys::paste(const Pressed& pressed) {
  if (!clipboard_) return parts_.failed("the clipboard can't be written here");
  const std::string text = parts_.toPaste();
  if (text.empty()) return parts_.failed("there is nothing to paste");
  busy_ = true;
  if (!copied_) return insert(pressed, text);
  const Copied copied = *std::exchange(copied_, {});
  replace(copied, pressed, text);
}

/// Copied once more, it must be the same.
void PressedKeys::replace(const Copied& copied, const Pressed& pressed, const std::string& text) {
  clipboard_->copy([this, copied] { return press(copied.chord); },
                   [=, this](const std::optional<std::string>& again) {
                     if (again == copied.text) return insert(pressed, text);
                     fail("what was copied isn't selected any more");
                   });
}

void PressedKeys::insert(const Pressed& pressed, const std::string& text) {
  clipboard_->paste(
      text, [this, pressed] { return press(pressed); }, [this] { goOn(); });
}

/// Not where the focus has gone to another field meanwhile.
bool PressedKeys::press(const Pressed& pressed) {
  if (pressed.field.empty() || pressed.field != parts_.field()) return false;
  if (takesKeys()) {
    wire_.passOn(pressed.key);
    return true;
  }
  const bool plays = display_ && x11::canPress(*display_);
  if (plays) play(pressed.key);
  return plays;
}

bool PressedKeys::takesKeys() const { return !takesLettersAlone(parts_.client()); }

void PressedKeys::play(const Key& key) {
  played_.clear();
  playedUntil_ = std::chrono::steady_clock::now() + kForPlayed;
  const auto modifiers = [&](bool down) {
    for (const Modifier& each : kModifiers) {
      if ((key.state & each.state) != 0) playOne(each.keycode, down);
    }
  };
  modifiers(true);
  playOne(key.keycode, true);
  playOne(key.keycode, false);
  modifiers(false);
}

void PressedKeys::playOne(std::uint32_t keycode, bool down) {
  played_.push_back({.keyval = 0, .keycode = keycode, .state = down ? 0 : kReleaseState});
  x11::press(*display_, keycode, down);
}

bool PressedKeys::comesBack(const Key& key) {
  if (played_.empty()) return false;
  if (std::chrono::steady_clock::now() > playedUntil_) played_.clear();
  const auto same = [&key](const Key& played) {
    return played.keycode == key.keycode && played.state == (key.state & kReleaseState);
  };
  if (played_.empty() || !same(played_.front())) return false;
  played_.pop_front();
  return true;
}

}  // namespace quorvane::ibus
