#include "tools/checker/ClipboardLoan.h"

namespace quorvane::checker {

namespace {

/// From the key that copies to the command it is less than two seconds.
constexpr std::chrono::seconds kJustNow{5};

constexpr std::uint64_t kSecond = 1'000'000'000;
constexpr std::uint64_t kLongestPaste = 3 * kSecond;
constexpr std::uint64_t kLongestLoan = 10 * kSecond;

}  // namespace

std::optional<std::string> ClipboardLoan::takeCopied() {
  const auto age = clipboard_.age();
  if (!age || *age > kJustNow || (lent_ && clipboard_.edition() == *lent_)) return std::nullopt;
  auto text = clipboard_.text();
  clipboard_.takeBackCopy();
  return text;
}

void ClipboardLoan::giveBack() {
  if (!lent_) return void(takeCopied());
  if (tool_.get(At::ClipState) != kRestoreArmed) end();
}

bool ClipboardLoan::lend(std::string_view text) {
  end();
  if (!clipboard_.lend(text)) return false;
  lent_ = clipboard_.edition();
  since_ = clock_.mach_absolute_time();
  pressed_ = false;
  tool_.put(At::ClipState, kRestoreArmed);
  return true;
}

bool ClipboardLoan::poll() {
  if (!lent_ || !isDue()) return false;
  end();
  return true;
}

/// Three seconds after the key that pastes the client has done so, and if nobody ever presses it,
/// ten seconds after the request.
bool ClipboardLoan::isDue() {
  const std::uint64_t now = clock_.mach_absolute_time();
  const bool pressed = tool_.get(At::ClipState) != kRestoreArmed;
  if (pressed && !pressed_) since_ = now;
  pressed_ = pressed;
  return now - since_ > (pressed_ ? kLongestPaste : kLongestLoan);
}

void ClipboardLoan::end() {
  if (!lent_) return;
  if (clipboard_.edition() == *lent_) clipboard_.endLoan();
  lent_.reset();
  tool_.put(At::ClipState, 0);
}

}  // namespace quorvane::checker
