#include "tools/checker/Fix.h"

#include <algorithm>
#include <span>

#include "tools/checker/MacRoman.h"
#include "tools/checker/OfferedSuggestions.h"
#include "tools/checker/PopupList.h"
#include "tools/checker/WordRules.h"

namespace quorvane::checker {

namespace {

using OwnBytes = std::vector<std::uint8_t>;

OwnBytes sessionBytes(const std::string& replacement, bool curlyApostrophes) {
  OwnBytes bytes(replacement.begin(), replacement.end());
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
  OwnBytes mended = sessionBytes(replacement, curly);
  mended.insert(mended.end(), at(word.end), record.text.end());
  auto text = documentText(mended);
  const std::size_t cursor = word.start + mended.size();
  if (!text || cursor > kTextCapacity) return std::nullopt;

  OwnBytes corrected(record.text.begin(), at(word.start));
  corrected.insert(corrected.end(), mended.begin(), mended.end());
  return Fix{std::move(spelt), std::move(replacement),
             static_cast<std::uint32_t>(documentLength({at(word.start), record.text.end()})),
             std::move(*text),
             TextRecord{std::move(corrected), newLength(record, cursor), record.key}};
}

struct Ended {
  Word place;
  TypedWord typed;
};

std::optional<Ended> endedWordOf(const Typing& typing) {
  const auto word = endedWord(typing.record);
  if (!word || word->start < typing.vouchedFrom) return std::nullopt;
  const std::span<const std::uint8_t> text(typing.record.text);
  const auto before = text.first(word->start);
  return Ended{*word,
               {spelling(text.subspan(word->start, word->end - word->start)),
                word->opensSentence,
                word->joined,
                typing.session,
                {before.begin(), before.end()},
                typing.record.key}};
}

std::optional<Fix> passageFix(const Typing& typing, const Ended& word, const Passage& passage) {
  if (passage.start < typing.vouchedFrom) return std::nullopt;
  return makeFix(typing.record, {.start = passage.start, .end = word.place.end}, passage.typed,
                 passage.meant);
}

}  // namespace

std::optional<Fix> findFix(const Typing& typing, WordChoice& choice) {
  const auto word = endedWordOf(typing);
  if (!word) return std::nullopt;
  if (auto replacement = choice.replacement(word->typed)) {
    return makeFix(typing.record, word->place, word->typed.spelt, std::move(*replacement));
  }
  const auto passage = choice.passage(word->typed);
  if (!passage || !passage->certain) return std::nullopt;
  return passageFix(typing, *word, *passage);
}

std::vector<Fix> findOffers(const Typing& typing, WordChoice& choice) {
  std::vector<Fix> offers;
  const auto word = endedWordOf(typing);
  if (!word || !isPopupLine(word->typed.spelt)) return offers;
  for (std::string& suggestion :
       offeredSuggestions(word->typed.spelt, kMostSuggestions, choice.offers(word->typed))) {
    if (!isPopupLine(suggestion)) continue;
    auto fix = makeFix(typing.record, word->place, word->typed.spelt, std::move(suggestion));
    if (fix) offers.push_back(std::move(*fix));
  }
  if (!offers.empty()) return offers;
  if (const auto passage = choice.passage(word->typed); passage && isPopupLine(passage->typed)) {
    if (auto fix = passageFix(typing, *word, *passage)) offers.push_back(std::move(*fix));
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
