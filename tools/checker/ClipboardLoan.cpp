#include "tools/checker/ClipboardLoan.h"

namespace quorvane::checker {

namespace {

constexpr std::uint64_t kSecond = 1'000'000'000;
constexpr std::uint64_t kLongestPaste = 3 * kSecond;
constexpr std::uint64_t kLongestLoan = 10 * kSecond;

}  // namespace

bool ClipboardLoan::giveBack() {
  const bool wasLent = lent_;
  const bool wasCopied = clipboard_.takeCommandsCopy().has_value();
  if (tool_.get(At::ClipState) != kRestoreArmed) end();
  return wasCopied || !wasLent;
}

bool ClipboardLoan::lend(std::string_view text) {
  if (lent_ && tool_.get(At::ClipState) == kRestoreArmed) return false;
  end();
  lent_ = clipboard_.lend(text);
  if (!lent_) return false;
  enter(kRestoreArmed);
  tool_.put(At::ClipState, kRestoreArmed);
  return true;
}

bool ClipboardLoan::poll() {
  const std::uint32_t state = tool_.get(At::ClipState);
  if (state != state_) enter(state);
  if ((!lent_ && state == 0) || !isDue()) return false;
  end();
  return true;
}

void ClipboardLoan::enter(std::uint32_t state) {
  state_ = state;
  since_ = clock_.mach_absolute_time();
}

/// Three seconds after the key that pastes the client has done so, and if nobody ever presses it,
/// ten seconds after the request.
bool ClipboardLoan::isDue() {
  const std::uint64_t limit = state_ == kRestoreArmed ? kLongestLoan : kLongestPaste;
  return clock_.mach_absolute_time() - since_ > limit;
}

void ClipboardLoan::end() {
  if (lent_) clipboard_.endLoan();
  lent_ = false;
  tool_.put(At::ClipState, 0);
}

}  // namespace quorvane::checker
