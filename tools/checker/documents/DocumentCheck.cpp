#include "tools/checker/documents/DocumentCheck.h"

#include <algorithm>
#include <utility>

#include "tools/checker/ForeignText.h"
#include "tools/checker/MacRoman.h"
#include "tools/checker/WordRules.h"
#include "tools/checker/documents/GrammarRules.h"
#include "tools/corrections/Letters.h"

namespace quorvane::checker {

namespace {

constexpr std::size_t kUnitsBefore = 256;  // that a word is judged by
constexpr std::size_t kUnitsOfAStep = 256;

/// A choice of words for this purpose: the part of it that is wanted, and no thought of what has
/// been typed.
class Reading final : public WordChoice {
 public:
  Reading(WordChoice& choice, CheckScope scope) : choice_(choice), scope_(scope) {}

  std::optional<std::string> replacement(const TypedWord& /*word*/) override { return {}; }
  std::optional<Passage> passage(const TypedWord& word) override {
    if (!scope_.grammar) return std::nullopt;
    auto passage = choice_.passage(word);
    choice_.notMade();
    return passage;
  }
  std::vector<std::string> offers(const TypedWord& word) override {
    if (!scope_.spelling || endsInForeignText(word.before)) return {};
    return choice_.offers(word);
  }

 private:
  WordChoice& choice_;
  CheckScope scope_;
};

bool mayBeInWord(std::uint8_t byte) {
  return isLetter(byte) || byte == '\'' || byte == kRightSingleQuote;
}
bool mayEndWord(std::uint8_t byte) { return isOneOf(" \t\r.,;:!?)]}\"", byte) || byte >= 128; }

bool isSmall(std::u16string_view word) { return word.front() >= u'a' && word.front() <= u'z'; }

/// With the capital of a sentence.
void begin(Finding& finding) {
  if (finding.suggestions.empty()) finding.suggestions.push_back(finding.found);
  for (std::u16string& suggestion : finding.suggestions) {
    if (isSmall(suggestion)) suggestion.front() -= u'a' - u'A';
  }
}

std::u16string likeIn(const std::u16string& found, const std::string& replacement) {
  std::u16string text = widenedAscii(replacement);
  if (found.find(u'\u2019') != std::u16string::npos) std::ranges::replace(text, u'\'', u'\u2019');
  return text;
}

}  // namespace

DocumentCheck::DocumentCheck(DocumentText text, WordChoice& choice, CheckScope scope)
    : text_(std::move(text)), choice_(choice), scope_(scope) {}

bool DocumentCheck::step() {
  const std::size_t size = text_.bytes.size();
  for (std::size_t i = 0; i < kUnitsOfAStep && !done(); ++i) {
    const std::size_t place = next_++;
    if (scope_.grammar && place < size) judgeMark(place);
    const bool ends = place == size || mayEndWord(text_.bytes[place]);
    if (!ends || place == 0 || !mayBeInWord(text_.bytes[place - 1])) continue;
    judgeWord(place);
    break;
  }
  return !done();
}

void DocumentCheck::judgeWord(std::size_t end) {
  const TextRecord record = recordUpTo(end);
  const auto word = endedWord(record);
  if (!word) return;
  const std::size_t first = end + 1 - record.text.size();
  const auto before = std::span(record.text).first(word->start);
  Finding finding{first + word->start, {}, {}};
  Reading reading(choice_, scope_);
  const auto offers = findOffers({record, 0, {}}, reading);
  if (!offers.empty()) finding.start = end + 1 - offers.front().count;
  finding.found = text_.units.substr(finding.start, first + word->end - finding.start);
  for (const Fix& offer : offers) {
    finding.suggestions.push_back(likeIn(finding.found, offer.replacement));
  }
  if (scope_.grammar && finding.start == first + word->start && isSmall(finding.found) &&
      surelyOpensSentence(before) && !endsInForeignText(before)) {
    begin(finding);
  }
  if (!finding.suggestions.empty()) add(std::move(finding));
}

void DocumentCheck::judgeMark(std::size_t mark) {
  const auto start = blanksBeforeMark(text_.bytes, mark);
  if (!start) return;
  add({*start, text_.units.substr(*start, mark + 1 - *start), {text_.units.substr(mark, 1)}});
}

/// As if all up to there had just been typed. Whatever ends the text, a word is over there.
TextRecord DocumentCheck::recordUpTo(std::size_t end) const {
  const auto at = [this](std::size_t place) {
    return text_.bytes.begin() + static_cast<std::ptrdiff_t>(place);
  };
  TextRecord record;
  record.text.assign(at(windowStart(end)), at(end));
  record.text.push_back(end < text_.bytes.size() ? text_.bytes[end] : ' ');
  record.length = record.text.size();
  record.key = record.text.back();
  record.smartCharacters = true;
  return record;
}

/// No word is cut there.
std::size_t DocumentCheck::windowStart(std::size_t end) const {
  if (end <= kUnitsBefore) return 0;
  std::size_t start = end - kUnitsBefore;
  while (start < end && !isOneOf(" \t\r", text_.bytes[start])) ++start;
  return start;
}

void DocumentCheck::add(Finding finding) {
  const bool free =
      findings_.empty() || findings_.back().start + findings_.back().found.size() <= finding.start;
  if (free) findings_.push_back(std::move(finding));
}

std::u16string corrected(const std::u16string& text, const std::vector<Finding>& findings,
                         const Decisions& decisions) {
  std::u16string result;
  std::size_t done = 0;
  for (std::size_t i = 0; i < findings.size() && i < decisions.size(); ++i) {
    if (!decisions[i]) continue;
    result.append(text, done, findings[i].start - done).append(*decisions[i]);
    done = findings[i].start + findings[i].found.size();
  }
  return result.append(text, done);
}

std::u16string markedUp(const std::u16string& text, const std::vector<Finding>& findings) {
  Decisions marks;
  for (const Finding& finding : findings) {
    marks.emplace_back(u"[" + finding.found + u": " + finding.suggestions.front() + u"]");
  }
  return corrected(text, findings, marks);
}

}  // namespace quorvane::checker
