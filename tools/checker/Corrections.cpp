#include "tools/checker/Corrections.h"

#include <algorithm>

#include "tools/checker/ForeignText.h"
#include "tools/checker/OfferedSuggestions.h"
#include "tools/corrections/Letters.h"

namespace quorvane::checker {

namespace {

using corrections::Rule;
using corrections::Writing;

/// Who has typed a word so often and left it means it.
constexpr int kMeant = 2;
constexpr std::size_t kMostLeft = 4096;

Writing writingOf(const TypedWord& word) {
  if (word.joined) return Writing::Joined;
  if (!isUpper(word.spelt.front())) return Writing::Small;
  return word.opensSentence ? Writing::CapitalAtStart : Writing::Capital;
}

bool samePlace(const TypedWord& one, const TypedWord& other) {
  return one.session == other.session && one.before == other.before;
}

/// Somewhere before it, with the same text up to there.
bool isOnTheWayTo(const TypedWord& place, const TypedWord& word) {
  return place.session == word.session && word.before.size() < place.before.size() &&
         std::ranges::equal(word.before, std::span(place.before).first(word.before.size()));
}

/// "i'm", "i've" and their like: no other word begins so.
bool isSmallI(const std::string& word) { return word.size() > 2 && word.starts_with("i'"); }

}  // namespace

Corrections::Corrections(Spelling& dictionary, std::unique_ptr<corrections::Corrector> corrector,
                         TakenBack takenBack, const CorrectionSwitches& switches,
                         std::function<keyboard::LayoutData()> layout)
    : dictionary_(dictionary),
      corrector_(std::move(corrector)),
      takenBack_(std::move(takenBack)),
      switches_(switches),
      passages_(switches, [this](auto word) { return corrector_->beginsWithVowel(word); }),
      layout_(std::move(layout)) {}

void Corrections::use(const CorrectionSwitches& switches) {
  switches_ = switches;
  passages_.use(switches);
}

void Corrections::followKeyboard() {
  const auto layout = layout_();
  if (layout == followed_ || layout == nullptr) return;
  followed_ = layout;
  corrector_->setNeighbours(corrections::KeyNeighbours(*layout));
}

bool Corrections::exists(const std::string& spelt) const {
  return dictionary_.accepts(spelt) || dictionary_.accepts(lowered(spelt));
}

corrections::Judgement Corrections::judge(const TypedWord& word) {
  followKeyboard();
  return corrector_->judge(lowered(word.spelt), writingOf(word),
                           [this](const std::string& other) { return dictionary_.accepts(other); });
}

void Corrections::leave(const std::string& spelt) {
  if (left_.size() >= kMostLeft) left_.clear();
  ++left_[spelt];
}

bool Corrections::isMeant(const std::string& spelt) const {
  const auto left = left_.find(spelt);
  return left != left_.end() && left->second >= kMeant;
}

std::optional<std::string> Corrections::sureReplacement(const TypedWord& word) {
  const std::string spelt = lowered(word.spelt);
  if (switches_.smallI && isSmallI(word.spelt) && exists(capitalised(spelt))) {
    return capitalised(spelt);
  }
  if (!switches_.words) return std::nullopt;
  const corrections::Judgement judgement = judge(word);
  if (judgement.rule <= Rule::Known) return std::nullopt;
  if (judgement.rule != Rule::Sure || exists(word.spelt)) {
    leave(spelt);
    return std::nullopt;
  }
  const std::string& best = judgement.ranked.front().word;
  if (isMeant(spelt) || takenBack_.refuses(spelt, best)) return std::nullopt;
  return isUpper(word.spelt.front()) ? capitalised(best) : best;
}

std::optional<std::string> Corrections::replacement(const TypedWord& word) {
  if (!corrector_) return std::nullopt;
  undone_.reset();
  if (last_ && !isOnTheWayTo(last_->word, word)) {
    if (last_->word.spelt == word.spelt && samePlace(last_->word, word)) undone_ = last_;
    last_.reset();
  }
  if (undone_ && undone_->typed == word.spelt) {
    takenBack_.learn(lowered(word.spelt), lowered(undone_->replacement));
    return std::nullopt;
  }
  if (endsInForeignText(word.before)) return std::nullopt;
  auto replacement = sureReplacement(word);
  if (replacement) last_ = Made{word, word.spelt, *replacement};
  return replacement;
}

/// The popup asks for it, too, where nothing has been made that could be undone.
std::optional<Passage> Corrections::passage(const TypedWord& word) {
  if (!corrector_ || endsInForeignText(word.before)) return std::nullopt;
  auto passage = passages_.endingIn(word);
  if (!passage) return std::nullopt;
  const std::string typed = lowered(passage->typed);
  const std::string meant = lowered(passage->meant);
  if (undone_ && undone_->typed == passage->typed) takenBack_.learn(typed, meant);
  if (takenBack_.refuses(typed, meant)) return std::nullopt;
  if (passage->certain) last_ = Made{word, passage->typed, passage->meant};
  return passage;
}

/// Candidates and guesses by one score, the guesses as the dictionary writes them.
std::vector<std::string> Corrections::merged(std::vector<corrections::Candidate> scored,
                                             const std::vector<std::string>& guesses,
                                             const std::string& typed) {
  for (const std::string& guess : guesses) {
    const std::string spelt = lowered(guess);
    const bool listed = std::ranges::count(scored, spelt, &corrections::Candidate::word) > 0;
    if (listed || !corrections::isWord(spelt)) continue;
    scored.push_back({guess, corrector_->score(spelt, typed)});
  }
  std::ranges::stable_sort(scored, std::ranges::greater(), &corrections::Candidate::score);
  std::vector<std::string> words;
  words.reserve(scored.size());
  for (corrections::Candidate& candidate : scored) words.push_back(std::move(candidate.word));
  return words;
}

std::vector<std::string> Corrections::offers(const TypedWord& word) {
  if (exists(word.spelt)) return {};
  if (!corrector_) return dictionary_.suggestions(word.spelt);
  corrections::Judgement judgement = judge(word);
  if (judgement.rule == Rule::Known) return {};
  auto guesses = dictionary_.suggestions(word.spelt);
  if (judgement.rule == Rule::NotAWord) return guesses;
  return merged(std::move(judgement.ranked), guesses, lowered(word.spelt));
}

}  // namespace quorvane::checker
