#include "tools/checker/Conversation.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace quorvane::checker {

namespace {

/// The input method waits for 100 ms. What isn't under way by now may meet a later key.
constexpr std::uint64_t kLatestNanoseconds = 60'000'000;
constexpr std::uint32_t kJudgeMouseClick = 108;

std::uint32_t hostWord(std::span<const std::uint8_t> bytes) {
  std::uint32_t word = 0;
  if (bytes.size() >= sizeof(word)) std::memcpy(&word, bytes.data(), sizeof(word));
  return word;
}

}  // namespace

Conversation::Conversation(const Segments& segments, Spelling* spelling, Clock& clock,
                           InputMethodPort& port, const CheckerOptions& options,
                           bool textsBeganWithUs, Listener listener)
    : tool_(segments.tool),
      text_(segments.text),
      command_(segments.command),
      spelling_(spelling),
      clock_(clock),
      port_(port),
      options_(options),
      vouching_(textsBeganWithUs),
      listener_(std::move(listener)) {}

bool Conversation::poll() {
  if (options_.manner == Manner::Silent) return false;
  if (!scanWanted()) return clearCommands();
  answerScan();
  return true;
}

bool Conversation::scanWanted() const { return (tool_.get(At::ScanFlags) & kScanBit) != 0; }

bool Conversation::inTime(std::uint64_t seenAt) const {
  return scanWanted() && clock_.mach_absolute_time() - seenAt < kLatestNanoseconds;
}

bool Conversation::spellingWanted() const {
  const std::uint32_t flags = tool_.get(At::AppFlags);
  return (flags & kWordCompletion) == 0 && (flags & kInteractiveSpelling) != 0;
}

/// All thinking comes before all writing. A scan that is over, or may be, is left as it stands: the
/// next look finds it gone, or finds a text that it knows and has nothing to say about.
void Conversation::answerScan() {
  const std::uint64_t seenAt = clock_.mach_absolute_time();
  const auto fix = decide();
  ScanEnd end = ScanEnd::NothingToFix;
  if (fix) end = port_.find() ? ScanEnd::Fixed : ScanEnd::NobodyToTell;
  if (!inTime(seenAt)) {
    tell(ScanEnd::Late);
    return;
  }
  if (end == ScanEnd::Fixed) end = hand(*fix);
  tool_.clearBits(At::Requests, kScanBit);
  tool_.clearBits(At::ScanFlags, kScanBit);
  tell(end);
}

std::optional<Fix> Conversation::decide() {
  const std::vector<std::uint8_t> bytes(text_.begin(), text_.end());
  const std::uint32_t change = takeSessionChange();
  auto record = decodeTextRecord(bytes);
  if (!record) return std::nullopt;
  record->smartCharacters = (tool_.get(At::SmartCharacters) & kSmartCharacterMask) != 0;
  const Sight sight = vouching_.observe(session(), *record, change);
  if (!sight.isNew) return std::nullopt;
  if (options_.manner == Manner::Slow) clock_.usleep(options_.slowMilliseconds * 1000);
  std::optional<Fix> fix;
  if (spelling_ != nullptr && spellingWanted() && sight.vouchedFrom) {
    fix = findFix(*record, *sight.vouchedFrom, *spelling_);
  }
  return inManner(std::move(fix), *record);
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
  if (fix.count > 0 && !port_.send(kMessageInput, messagePayload(fix))) {
    tool_.put(At::BufferChanged, 0);
    std::ranges::copy(before, text_.begin());
    return ScanEnd::NobodyToTell;
  }
  if (listener_.fix) listener_.fix(fix);
  return ScanEnd::Fixed;
}

void Conversation::tell(ScanEnd end) {
  if (listener_.scan) listener_.scan(end);
}

/// We have no window, no popup and no menu: requests end as soon as they are seen, and a mouse
/// click is never ours.
bool Conversation::clearCommands() {
  const std::uint32_t bits = tool_.get(At::Requests);
  if (bits == 0) return false;
  const std::uint32_t command = hostWord(command_);
  if (command == kJudgeMouseClick) tool_.put(At::MousePoint, 0);
  tool_.clearBits(At::Requests, bits);
  // The bit of a scan that ended without us tells nothing.
  if (bits != kScanBit && listener_.command) listener_.command(command, bits);
  return true;
}

}  // namespace quorvane::checker
