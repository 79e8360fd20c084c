#include "tools/checker/Vouching.h"

#include <algorithm>

#include "tools/checker/ToolRecord.h"
#include "tools/checker/WordRules.h"

namespace quorvane::checker {

namespace {

constexpr std::size_t kSessionLimit = 4096;
/// From this length on a sentence's end makes the session's text start afresh at the next key.
constexpr std::size_t kFreshStartLength = 320;

bool isAmong(std::initializer_list<std::uint8_t> set, std::uint8_t byte) {
  return std::ranges::find(set, byte) != set.end();
}

bool startsAfreshNext(const std::vector<std::uint8_t>& text) {
  return text.size() >= kFreshStartLength && isAmong({' ', '\r', '\t'}, text.back()) &&
         isAmong({'.', '?', '!', '\r'}, text[text.size() - 2]);
}

bool beginsWith(const std::vector<std::uint8_t>& text, const std::vector<std::uint8_t>& other,
                std::size_t count) {
  return text.size() >= count && other.size() >= count &&
         std::equal(other.begin(), other.begin() + static_cast<std::ptrdiff_t>(count),
                    text.begin());
}

}  // namespace

Vouching::Known& Vouching::known(const SessionKey& session) {
  const auto found = sessions_.find(session);
  if (found != sessions_.end()) return found->second;
  if (sessions_.size() >= kSessionLimit) {  // all are met again as strangers
    sessions_.clear();
    textsBeganWithUs_ = false;
  }
  Known& fresh = sessions_[session];
  if (textsBeganWithUs_) fresh.vouchedFrom = 0;
  return fresh;
}

Sight Vouching::observe(const SessionKey& session, const TextRecord& record, std::uint32_t change) {
  Known& before = known(session);
  auto& from = before.vouchedFrom;
  if (change == kTextOverflowed || change == kTextCancelled) {
    from.reset();
  } else if (from && !beginsWith(record.text, before.text, *from)) {
    // Either a new sentence, or the user went back to before the point known.
    if (startsAfreshNext(before.text)) {
      from = 0;
    } else {
      from.reset();
    }
  }
  const Sight sight{from, record.text != before.text};
  if (!from && typedBoundary(record)) from = record.text.size();
  before.text = record.text;
  return sight;
}

}  // namespace quorvane::checker
