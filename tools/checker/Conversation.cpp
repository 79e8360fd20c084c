#include "tools/checker/Conversation.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "tools/checker/SentenceStart.h"

namespace quorvane::checker {

namespace {

/// The input method waits for 100 ms. What isn't under way by now may meet a later key.
constexpr std::uint64_t kLatestNanoseconds = 60'000'000;

}  // namespace

Conversation::Conversation(const Segments& segments, WordChoice* choice, Clock& clock,
                           InputMethodPort& port, const CheckerOptions& options,
                           bool textsBeganWithUs, Listener listener)
    : tool_(segments.tool),
      text_(segments.text),
      command_(segments.command),
      choice_(choice),
      clock_(clock),
      port_(port),
      options_(options),
      vouching_(textsBeganWithUs),
      listener_(std::move(listener)),
      window_(tool_) {}

Conversation::~Conversation() { closeWindow(); }

bool Conversation::poll() {
  if (options_.manner == Manner::Silent) return false;
  const bool closed = closeStalePopup();
  if (!scanWanted()) return clearCommands() || closed;
  answerScan();
  return true;
}

bool Conversation::scanWanted() const { return (tool_.get(At::ScanFlags) & kScanBit) != 0; }

bool Conversation::inTime(std::uint64_t seenAt) const {
  return scanWanted() && clock_.mach_absolute_time() - seenAt < kLatestNanoseconds;
}

/// The bit may be that of a following scan by now.
bool Conversation::isStillThere(const Findings& found) const {
  return std::ranges::equal(found.textRecord, text_);
}

bool Conversation::spellingWanted() const {
  const std::uint32_t flags = tool_.get(At::AppFlags);
  return (flags & kWordCompletion) == 0 && (flags & kInteractiveSpelling) != 0;
}

/// Also where completion is on: what it writes otherwise than it was typed, the input method knows.
bool Conversation::expansionWanted() const {
  const std::uint32_t flags = tool_.get(At::AppFlags);
  return abbreviations_ != nullptr && (flags & kAbbreviations) != 0;
}

/// All thinking comes before all writing. A scan that is over, or may be, is left as it stands: the
/// next look finds it gone, or finds a text that it knows and has nothing to say about.
void Conversation::answerScan() {
  const std::uint64_t seenAt = clock_.mach_absolute_time();
  Findings found = decide();
  ScanEnd end = ScanEnd::NothingToFix;
  if (found.fix || !found.offers.empty()) {
    end = port_.find() ? ScanEnd::Fixed : ScanEnd::NobodyToTell;
  }
  if (!inTime(seenAt) || !isStillThere(found)) {
    if (found.chosen) choice_->notMade();
    tell(ScanEnd::Late);
    return;
  }
  tool_.put(At::SentenceStart, found.sentenceStart ? 1 : 0);
  if (end == ScanEnd::Fixed) {
    end = found.fix ? mend(*found.fix) : openPopup(std::move(found.offers));
  }
  if (found.chosen && end != ScanEnd::Fixed) choice_->notMade();
  if (options_.documentWindow) window_.accompany(clientSignature());
  tool_.clearBits(At::Requests, kScanBit);
  tool_.clearBits(At::ScanFlags, kScanBit);
  tell(end);
}

Conversation::Findings Conversation::decide() {
  Findings found;
  found.textRecord.assign(text_.begin(), text_.end());
  const std::uint32_t change = takeSessionChange();
  auto record = decodeTextRecord(found.textRecord);
  if (!record) return found;
  record->smartCharacters = (tool_.get(At::SmartCharacters) & kSmartQuotesAndDashes) != 0;
  const Sight sight = vouching_.observe(session(), *record, change);
  if (sight.isNew) {
    if (options_.manner == Manner::Slow)
      clock_.usleep(Microseconds(options_.slowMilliseconds * 1000));
    if (sight.vouchedFrom) check(*record, *sight.vouchedFrom, found);
    found.fix = inManner(std::move(found.fix), *record);
  }
  found.sentenceStart = startsSentence(*record);
  return found;
}

void Conversation::check(const TextRecord& record, std::size_t vouchedFrom, Findings& found) {
  const Typing typing{record, vouchedFrom, session()};
  if (expansionWanted()) found.fix = findExpansion(typing, *abbreviations_);
  if (found.fix || choice_ == nullptr || !spellingWanted()) return;
  if (options_.popup) {
    found.offers = findOffers(typing, *choice_);
  } else {
    found.fix = findFix(typing, *choice_);
    found.chosen = found.fix.has_value();
  }
}

SessionKey Conversation::session() const { return {port_.asker(), tool_.get(At::SessionHandle)}; }

/// Zeroed so that the input method doesn't take its own word for news of ours.
std::uint32_t Conversation::takeSessionChange() {
  const std::uint32_t change = tool_.get(At::SessionChange);
  if (change != 0) tool_.put(At::SessionChange, 0);
  return change;
}

std::optional<Fix> Conversation::inManner(std::optional<Fix> fix, const TextRecord& record) {
  if (options_.manner != Manner::Stale) return fix;
  if (!fix) fix.emplace().corrected = record;
  return std::exchange(staleFix_, std::move(fix));
}

/// Text and message go together or not at all.
ScanEnd Conversation::hand(const Fix& fix) {
  const std::vector<std::uint8_t> before(text_.begin(), text_.end());
  if (!encodeTextRecord(fix.corrected, text_)) return ScanEnd::NothingToFix;
  tool_.put(At::BufferChanged, 1);
  if (!fix.text.empty() && !port_.send(kMessageInput, messagePayload(fix))) {
    tool_.put(At::BufferChanged, 0);
    std::ranges::copy(before, text_.begin());
    return ScanEnd::NobodyToTell;
  }
  if (listener_.fix) listener_.fix(fix);
  return ScanEnd::Fixed;
}

ScanEnd Conversation::mend(const Fix& fix) {
  const ScanEnd end = hand(fix);
  if (end == ScanEnd::Fixed) vouching_.mended(session(), fix.corrected.text);
  return end;
}

bool Conversation::insert(std::u16string_view text) {
  const TextRecord record = decodeTextRecord(text_).value_or(TextRecord{});
  const std::size_t caret = record.text.size();
  const auto fix = writtenOver(record, caret, caret, text);
  return !text.empty() && fix && port_.find() && mend(*fix) == ScanEnd::Fixed;
}

ScanEnd Conversation::openPopup(std::vector<Fix> offers) {
  PopupList list{offers.front().word, {}};
  std::size_t longest = 0;
  for (const Fix& offer : offers) {
    list.suggestions.push_back(offer.replacement);
    longest = std::max(longest, offer.replacement.size());
  }
  if (listener_.popup) listener_.popup(&list);
  popup_ = Popup{std::move(offers), {text_.begin(), text_.end()}};
  popupText_ = decodeTextRecord(text_).value_or(TextRecord{}).text;
  tool_.put(At::ControlDigits, options_.controlDigits ? 1 : 0);
  // A digit and a space before each, a space behind.
  window_.openPopup({list.suggestions.size(), longest + 3}, clientSignature());
  return ScanEnd::Offered;
}

void Conversation::tell(ScanEnd end) {
  if (listener_.scan) listener_.scan(end);
}

}  // namespace quorvane::checker
