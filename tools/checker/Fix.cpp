#include "tools/checker/Fix.h"

#include <algorithm>
#include <span>

#include "tools/checker/MacRoman.h"
#include "tools/checker/SuggestionChoice.h"
#include "tools/checker/WordRules.h"

namespace quorvane::checker {

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes sessionBytes(const std::string& replacement, bool curlyApostrophes) {
  Bytes bytes(replacement.begin(), replacement.end());
  if (curlyApostrophes) std::ranges::replace(bytes, std::uint8_t{'\''}, kRightSingleQuote);
  return bytes;
}

/// What lies behind the cursor stays where it is in the session, out of our reach: it is kept only
/// where it needn't move.
std::size_t newLength(const TextRecord& record, std::size_t newCursor) {
  return newCursor == record.text.size() ? record.length : newCursor;
}

std::optional<Fix> makeFix(const TextRecord& record, const Word& word, std::string spelt,
                           std::string replacement) {
  const auto at = [&record](std::size_t index) {
    return record.text.begin() + static_cast<std::ptrdiff_t>(index);
  };
  const bool curly = std::find(at(word.start), at(word.end), kRightSingleQuote) != at(word.end);
  Bytes mended = sessionBytes(replacement, curly);
  mended.insert(mended.end(), at(word.end), record.text.end());
  auto text = documentText(mended);
  const std::size_t cursor = word.start + mended.size();
  if (!text || cursor > kTextCapacity) return std::nullopt;

  Bytes corrected(record.text.begin(), at(word.start));
  corrected.insert(corrected.end(), mended.begin(), mended.end());
  return Fix{std::move(spelt), std::move(replacement),
             static_cast<std::uint32_t>(record.text.size() - word.start), std::move(*text),
             TextRecord{std::move(corrected), newLength(record, cursor), record.key}};
}

}  // namespace

std::optional<Fix> findFix(const TextRecord& record, std::size_t vouchedFrom, Spelling& spelling) {
  const auto word = endedWord(record);
  if (!word || word->start < vouchedFrom) return std::nullopt;
  const std::span<const std::uint8_t> text(record.text);
  std::string spelt =
      quorvane::checker::spelling(text.subspan(word->start, word->end - word->start));
  if (spelling.accepts(spelt)) return std::nullopt;
  auto replacement = chooseSuggestion(spelt, !word->opensSentence, spelling.suggestions(spelt));
  if (!replacement) return std::nullopt;
  return makeFix(record, *word, std::move(spelt), std::move(*replacement));
}

std::vector<std::uint8_t> messagePayload(const Fix& fix) {
  std::vector<std::uint8_t> payload;
  for (int shift = 24; shift >= 0; shift -= 8) {
    payload.push_back(static_cast<std::uint8_t>(fix.count >> shift));
  }
  payload.insert(payload.end(), fix.text.begin(), fix.text.end());
  return payload;
}

}  // namespace quorvane::checker
