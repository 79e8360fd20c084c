// Commands: as bits of the tool record, with the command in segment 896 beside them, or as
// messages.

#include <algorithm>
#include <array>
#include <atomic>

#include "src/base/HostWords.h"
#include "tools/checker/Conversation.h"

namespace quorvane::checker {

namespace {

constexpr std::uint32_t kShowOrHideWindow = 100;
constexpr std::uint32_t kPopupKey = 101;
constexpr std::uint32_t kCloseWindow = 104;
constexpr std::uint32_t kClosePopup = 105;
constexpr std::uint32_t kPopupNavigation = 106;
constexpr std::uint32_t kJudgeClick = 108;
constexpr std::uint32_t kRestoreClipboard = 16390;
constexpr std::uint32_t kFillMenuRecord = 8;
constexpr std::uint32_t kReadDictionaries = 16383;
constexpr std::uint32_t kQuit = 65534;

constexpr std::size_t kCommandOffset = 0;
constexpr std::size_t kFrontSignatureOffset = 12;

constexpr std::uint8_t kTab = 9;
constexpr std::uint8_t kDownArrow = 31;

struct Request {
  std::uint32_t bit;
  std::uint32_t command;
  bool alone;  ///< no other command has the bit
};
constexpr std::array kRequests{Request{0, kCloseWindow, true},
                               Request{1, kCloseWindow, true},
                               Request{2, kShowOrHideWindow, true},
                               Request{3, kReadDictionaries, true},
                               Request{5, 17140, true},  // dates
                               Request{6, 17141, true},
                               Request{7, 17142, true},
                               Request{9, 17145, true},
                               Request{10, 17146, true},
                               Request{11, 17147, true},
                               Request{12, 17149, true},
                               Request{13, 17100, true},  // text tools
                               Request{14, 17101, true},
                               Request{15, 17102, true},
                               Request{16, 17110, false},
                               Request{17, 17111, false},
                               Request{17, kJudgeClick, false},
                               Request{19, kRestoreClipboard, false},
                               Request{19, kQuit, false},
                               Request{20, kRestoreClipboard, true},
                               Request{22, 2, true},  // checks
                               Request{23, 6, true},
                               Request{24, 7, true},
                               Request{28, kFillMenuRecord, true},
                               Request{31, 35, true}};  // a word is looked up

bool isDigit(std::uint32_t key) { return key >= '0' && key <= '9'; }

}  // namespace

/// Whatever we have nothing to do for ends, too, so that nobody waits.
bool Conversation::clearCommands() {
  const std::uint32_t bits = tool_.get(At::Requests);
  if (bits == 0) return false;
  const std::uint32_t last = hostWord32(command_, kCommandOffset);
  for (const Request& request : kRequests) {
    const bool set = (bits >> request.bit & 1) != 0;
    if (!set || (!request.alone && request.command != last)) continue;
    obey(request.command);
    if (!request.alone) forget(last);
  }
  tool_.clearBits(At::Requests, bits);
  // The bit of a scan that ended without us tells nothing.
  if (bits != kScanBit && listener_.command) listener_.command(last, bits);
  return true;
}

/// The bit may come for another command, whose number follows it: a scan's does.
void Conversation::forget(std::uint32_t command) {
  auto* const number = reinterpret_cast<std::uint32_t*>(command_.data() + kCommandOffset);
  std::atomic_ref(*number).compare_exchange_strong(command, 0);
}

/// A modifier key for the document window, 102, changes nothing there.
void Conversation::obey(std::uint32_t command) {
  if (options_.manner == Manner::Silent) return;
  switch (command) {
    case kShowOrHideWindow:
      // The popup has no way back: it closes.
      return popup_ ? closeWindow() : window_.showOrHide();
    case kPopupKey:
      return popupKey();
    case kCloseWindow:
      return closeWindow();
    case kClosePopup:
      if (popup_) closeWindow();
      return;
    case kPopupNavigation:
      return popupNavigation();
    case kJudgeClick:
      return judgeClick();
    default:
      if (listener_.perform) listener_.perform(command);
  }
}

void Conversation::closeWindow() {
  window_.close();
  if (popup_ && listener_.popup) listener_.popup(nullptr);
  popup_.reset();
}

/// What was offered was for a text that is no more.
bool Conversation::closeStalePopup() {
  if (!popup_ || std::ranges::equal(popup_->textRecord, text_)) return false;
  closeWindow();
  return true;
}

/// The key won't reach the document, whatever we answer: a digit that chooses nothing is typed from
/// here. Any key ends the popup, the down arrow without a choice.
void Conversation::popupKey() {
  const std::uint32_t key = tool_.get(At::PopupChar);
  closeStalePopup();
  const bool taken = popup_ && (key == kDownArrow || (isDigit(key) && choose(key - '1')));
  if (!taken && isDigit(key) && port_.find()) {
    const TextRecord record = decodeTextRecord(text_).value_or(TextRecord{});
    // Otherwise we have come too late, and field 26 holds a key that has been typed since.
    const bool current = record.text == popupText_;
    if (current) hand(typedCharacter(record, static_cast<std::uint8_t>(key)));
  }
  closeWindow();
  if (!taken) tool_.put(At::PopupChar, 0);
}

/// Tab takes the first suggestion. Any other key is for the document.
void Conversation::popupNavigation() {
  closeStalePopup();
  if (tool_.get(At::PopupChar) != kTab || !choose(0)) return;
  closeWindow();
  tool_.put(At::PopupChar, 0);
}

/// False where there is no such suggestion, which none is for the digit 0, or no way to the
/// document.
bool Conversation::choose(std::size_t index) {
  if (!popup_ || index >= popup_->offers.size() || !port_.find()) return false;
  return hand(popup_->offers[index]) == ScanEnd::Fixed;
}

void Conversation::judgeClick() {
  if (!window_.holds(tool_.get(At::MousePoint))) tool_.put(At::MousePoint, 0);
}

std::uint32_t Conversation::clientSignature() const {
  return hostWord32(command_, kFrontSignatureOffset);
}

}  // namespace quorvane::checker
