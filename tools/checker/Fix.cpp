#include "tools/checker/Fix.h"

#include <algorithm>
#include <span>

#include "tools/checker/MacRoman.h"
#include "tools/checker/PopupList.h"
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
             static_cast<std::uint32_t>(documentLength({at(word.start), record.text.end()})),
             std::move(*text),
             TextRecord{std::move(corrected), newLength(record, cursor), record.key}};
}

struct Misspelling {
  Word word;
  std::string spelt;
  std::vector<std::string> suggestions;
};

std::optional<Misspelling> findMisspelling(const TextRecord& record, std::size_t vouchedFrom,
                                           Spelling& spelling) {
  const auto word = endedWord(record);
  if (!word || word->start < vouchedFrom) return std::nullopt;
  const std::span<const std::uint8_t> text(record.text);
  std::string spelt =
      quorvane::checker::spelling(text.subspan(word->start, word->end - word->start));
  if (spelling.accepts(spelt)) return std::nullopt;
  auto suggestions = spelling.suggestions(spelt);
  return Misspelling{*word, std::move(spelt), std::move(suggestions)};
}

}  // namespace

std::optional<Fix> findFix(const TextRecord& record, std::size_t vouchedFrom, Spelling& spelling) {
  auto wrong = findMisspelling(record, vouchedFrom, spelling);
  if (!wrong) return std::nullopt;
  auto replacement = chooseSuggestion(wrong->spelt, !wrong->word.opensSentence, wrong->suggestions);
  if (!replacement) return std::nullopt;
  return makeFix(record, wrong->word, std::move(wrong->spelt), std::move(*replacement));
}

std::vector<Fix> findOffers(const TextRecord& record, std::size_t vouchedFrom, Spelling& spelling) {
  std::vector<Fix> offers;
  const auto wrong = findMisspelling(record, vouchedFrom, spelling);
  if (!wrong || !isPopupLine(wrong->spelt)) return offers;
  for (std::string& suggestion :
       offeredSuggestions(wrong->spelt, kMostSuggestions, wrong->suggestions)) {
    if (!isPopupLine(suggestion)) continue;
    auto fix = makeFix(record, wrong->word, wrong->spelt, std::move(suggestion));
    if (fix) offers.push_back(std::move(*fix));
  }
  return offers;
}

Fix typedCharacter(TextRecord record, std::uint8_t character) {
  if (record.text.size() >= kTextCapacity) record.text.clear();
  record.text.push_back(character);
  record.length = record.text.size();
  const std::string typed(1, static_cast<char>(character));
  return {{}, typed, 0, typed, std::move(record)};
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
