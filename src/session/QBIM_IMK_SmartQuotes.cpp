#include "src/session/QBIM_IMK_SmartQuotes.h"

#include <algorithm>
#include <array>
#include <optional>

#include "src/base/KeyBytes.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/keys/QBIM_IMK_EventPosting.h"
#include "src/menu/CurrentAppFlags.h"
#include "src/session/CharacterPolicy.h"
#include "src/session/QBIM_IMK_CharFix.h"
#include "src/session/QBIM_IMK_TextBuffer.h"
#include "src/session/WordInProgress.h"

namespace quorvane {
namespace {

struct Quote {
  std::uint8_t straight;
  std::uint8_t opening;
  std::uint8_t closing;
};
constexpr std::array<Quote, 2> kQuotes{{
    {kDoubleQuote, kLeftDoubleQuote, kRightDoubleQuote},
    {kSingleQuote, kLeftSingleQuote, kRightSingleQuote},
}};

struct Dash {
  std::uint8_t previous;
  std::uint8_t next;
  std::uint32_t replaceLength;  // of the document: only a hyphen makes room for its successor
};
constexpr std::array<Dash, 3> kDashes{{
    {kHyphen, kEmDash, 1},
    {kEmDash, kEnDash, 0},
    {kEnDash, kHyphen, 0},
}};

const Quote* findQuote(std::uint8_t keyByte) {
  const auto* row = std::find_if(kQuotes.begin(), kQuotes.end(),
                                 [&](const Quote& quote) { return quote.straight == keyByte; });
  return row == kQuotes.end() ? nullptr : row;
}

// A character beyond ASCII is 0: neither a dash nor anything that a quote opens behind.
std::optional<std::uint8_t> byteBeforeCursor(const BIMSessionRec& session) {
  if (session.cursor == 0) return std::nullopt;
  const std::uint32_t last = session.cursor - 1;
  return session.beyondAscii[last] ? std::uint8_t{0} : (*session.sessionText)[last];
}

// The buffer always gets the new character, and keeps the old one before it.
std::int32_t replaceKey(Instance& instance, BIMSessionRec* session, std::uint8_t& keyByte,
                        std::uint8_t replacement, std::uint32_t replaceLength) {
  keyByte = replacement;
  const std::int32_t taken =
      BIMHandleInput(instance, session, replacement, ByteOrigin::Replacement);
  if (static_cast<std::uint8_t>(taken) == 0) Send_Char_Fix(instance, &replacement, replaceLength);
  return 1;
}

std::int32_t replaceHyphen(Instance& instance, BIMSessionRec* session, std::uint8_t& keyByte,
                           std::optional<std::uint8_t> previous) {
  const auto* dash = std::find_if(kDashes.begin(), kDashes.end(),
                                  [&](const Dash& row) { return row.previous == previous; });
  if (dash == kDashes.end() || session->cursor - dash->replaceLength < session->place) return 0;
  return replaceKey(instance, session, keyByte, dash->next, dash->replaceLength);
}

std::uint32_t allowedNow(Instance& instance) {
  const std::uint32_t allowed = AutoCorrect_SmartChar_Flag(instance);
  return instance.state<WordInProgressState>().held ? allowed & kSentenceCapitals : allowed;
}

// White space and enter keep waiting for the letter. The capital is pressed as a key of its own and
// comes back through the whole path; where it can't be, the letter stays as it was typed.
std::int32_t beginSentence(Instance& instance, BIMSessionRec& session, std::uint8_t keyByte) {
  if (keyByte == kSpace || keyByte == kReturnKey || keyByte == kEnterKey) return 0;
  session.sentenceFlags = 0;
  if (keyByte < 'a' || keyByte > 'z') return 0;
  constexpr std::uint8_t kToCapital = 'a' - 'A';
  const auto capital = static_cast<std::uint8_t>(keyByte - kToCapital);
  return DO_FIX_CHAR(instance, &session, capital);
}

}  // namespace

std::int32_t Check_SmartQuotes(Instance& instance, EventRef /*event*/, BIMSessionRec* session,
                               std::uint8_t& keyByte) {
  if (session == nullptr || !session->sessionText) return 0;
  const bool atStart = (session->sentenceFlags & kSentenceStart) != 0;
  const Quote* quote = findQuote(keyByte);
  if (!atStart && quote == nullptr && keyByte != kHyphen) return 0;
  const auto previous = byteBeforeCursor(*session);
  const std::uint32_t allowed = allowedNow(instance);
  if (keyByte == kHyphen && (allowed & kSmartDashes) != 0) {
    return replaceHyphen(instance, session, keyByte, previous);
  }
  if (quote != nullptr && (allowed & kSmartQuotes) != 0) {
    const bool opens = !previous || is_space_closing_char(*previous, keyByte);
    return replaceKey(instance, session, keyByte, opens ? quote->opening : quote->closing, 0);
  }
  if (!atStart || (allowed & kSentenceCapitals) == 0) return 0;
  return beginSentence(instance, *session, keyByte);
}

std::uint32_t AutoCorrect_SmartChar_Flag(Instance& instance) {
  if ((instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS & kAutoCorrectFlag) == 0) return 0;
  const ToolRec record(instance);
  if (!record || record.get(ToolCRecPtr_InteractiveMode) == 0 ||
      record.get(ToolCRecPtr_SuspendTotal) != 0) {
    return 0;
  }
  return record.get(ToolCRecPtr_SmartCharFlags) & (kSmartQuotes | kSmartDashes | kSentenceCapitals);
}

bool is_space_closing_char(std::uint8_t previous, std::uint8_t key) {
  switch (previous) {
    case kTabKey:
    case kFormFeed:
    case kReturnKey:
    case kSpace:
    case kNoBreakSpace:
    case kRightDoubleQuote:
    case kLeftSingleQuote:
      return true;
    case kDoubleQuote:
      return key != kSingleQuote && key != kDoubleQuote;
    case kSingleQuote:
    case kRightSingleQuote:
      return key != kDoubleQuote;
    default:
      return false;
  }
}

}  // namespace quorvane
