#include "tools/checker/Fix.h"

#include <algorithm>
#include <span>

#include "src/base/Text.h"
#include "tools/checker/MacRoman.h"
#include "tools/checker/OfferedSuggestions.h"
#include "tools/checker/PopupList.h"
#include "tools/checker/WordRules.h"

namespace quorvane::checker {

namespace {

using OwnBytes = std::vector<std::uint8_t>;

/// What lies behind the cursor stays where it is in the session, out of our reach: it is kept only
/// where it needn't move.
std::size_t newLength(const TextRecord& record, std::size_t newCursor) {
  return newCursor == record.text.size() ? record.length : newCursor;
}

/// Empty where it has no room and there is no reason to begin anew, as the other side sees it.
std::optional<OwnBytes> joined(std::span<const std::uint8_t> head, const OwnBytes& rest) {
  if (rest.size() > kTextCapacity) return std::nullopt;
  if (head.size() + rest.size() > kTextCapacity) {
    if (documentLength(head) + documentLength(rest) <= kTextCapacity) return std::nullopt;
    return rest;
  }
  OwnBytes all(head.begin(), head.end());
  all.insert(all.end(), rest.begin(), rest.end());
  return all;
}

std::optional<Fix> makeFix(const TextRecord& record, const Word& word, std::string spelt,
                           std::string replacement) {
  const auto typed = std::span(record.text).subspan(word.start, word.end - word.start);
  std::u16string text(replacement.begin(), replacement.end());
  if (std::ranges::find(typed, kRightSingleQuote) != typed.end()) {
    std::ranges::replace(text, u'\'', u'\u2019');
  }
  auto fix = writtenOver(record, word.start, word.end, text);
  if (fix) {
    fix->word = std::move(spelt);
    fix->replacement = std::move(replacement);
  }
  return fix;
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

std::optional<Fix> writtenOver(const TextRecord& record, std::size_t start, std::size_t end,
                               std::u16string_view text) {
  const std::span<const std::uint8_t> all(record.text);
  const auto gone = documentText(all.subspan(start));
  if (!gone || !hasUtf8Form(text)) return std::nullopt;
  OwnBytes written = sessionBytes(text);
  const auto kept = all.subspan(end);
  written.insert(written.end(), kept.begin(), kept.end());
  auto after = joined(all.first(start), written);
  if (!after) return std::nullopt;
  const std::size_t length = newLength(record, after->size());
  return Fix{*documentText(all.subspan(start, end - start)), toUtf8(text),
             static_cast<std::uint32_t>(documentLength(all.subspan(start))),
             toUtf8(text) + *documentText(kept), TextRecord{std::move(*after), length, record.key}};
}

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

Fix typedCharacter(const TextRecord& record, std::uint8_t character) {
  const std::size_t end = record.text.size();
  const char16_t typed = character;
  return writtenOver(record, end, end, {&typed, 1}).value_or(Fix{});
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
