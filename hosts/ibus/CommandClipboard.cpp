#include "hosts/ibus/CommandClipboard.h"

#include <utility>

namespace quorvane::ibus {
namespace {

using namespace std::chrono_literals;

constexpr Seconds kForCopy{0.6};
constexpr Seconds kLook{0.1};
constexpr auto kForPaste = 3s;
/// Where the client stands still.
constexpr auto kLongestPaste = 30s;
/// Who pastes may ask more than once.
constexpr auto kBehindPaste = 300ms;

}  // namespace

void CommandClipboard::copy(Press press, std::function<void(std::optional<std::string>)> then) {
  copied_ = std::move(then);
  selection_.look([this, press = std::move(press)](x11::Selection::Content content) {
    former_ = std::move(content);
    if (!press()) return endCopy({});
    awaitCopy();
  });
}

void CommandClipboard::awaitCopy() {
  selection_.copied = [this] { readCopy(); };
  timer_ = runLoop_.addTimer(kForCopy, Seconds{0}, [this] { endCopy({}); });
}

void CommandClipboard::readCopy() {
  timer_.reset();
  overtaken_ = false;
  selection_.copied = [this] { overtaken_ = true; };
  selection_.look([this](x11::Selection::Content content) {
    if (overtaken_) return endCopy({});
    restore();
    endCopy(std::move(content.text));
  });
}

void CommandClipboard::endCopy(std::optional<std::string> text) {
  timer_.reset();
  selection_.copied = nullptr;
  former_ = {};
  std::exchange(copied_, {})(std::move(text));
}

void CommandClipboard::paste(std::string text, Press press, std::function<void()> then) {
  pasted_ = std::move(then);
  selection_.look(
      [this, text = std::move(text), press = std::move(press)](x11::Selection::Content content) {
        former_ = std::move(content);
        selection_.own(text);
        if (!press()) return endPaste();
        const Moment since = std::chrono::steady_clock::now();
        timer_ = runLoop_.addTimer(kLook, kLook, [this, since] { awaitPaste(since); });
      });
}

void CommandClipboard::awaitPaste(Moment since) {
  const Moment now = std::chrono::steady_clock::now();
  const auto taken = selection_.taken();
  const bool isOver = (taken && now - *taken > kBehindPaste) || now - since > kLongestPaste;
  if (isOver || !selection_.isOwn()) return endPaste();
  if (now - since > kForPaste) goOn();
}

void CommandClipboard::endPaste() {
  timer_.reset();
  if (selection_.isOwn()) restore();
  former_ = {};
  goOn();
}

void CommandClipboard::goOn() {
  if (pasted_) std::exchange(pasted_, {})();
}

void CommandClipboard::restore() {
  if (!former_.isAll) return;
  if (former_.text) return selection_.own(*std::exchange(former_.text, {}));
  selection_.clear();
}

}  // namespace quorvane::ibus
