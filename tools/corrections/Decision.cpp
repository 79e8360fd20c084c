#include "tools/corrections/Decision.h"

#include <algorithm>
#include <map>

#include "tools/corrections/Letters.h"
#include "tools/corrections/WordForms.h"

namespace quorvane::corrections {

namespace {

constexpr std::size_t kMostCandidates = 9;
constexpr float kAlone = 20;
/// Of the logarithm of a frequency: 300 in 1,000,000,000.
constexpr float kSurelyAWord = 5.7F;

/// Who types an apostrophe means one.
bool keepsApostrophe(std::string_view word, std::string_view candidate) {
  return word.find('\'') == std::string_view::npos ||
         candidate.find('\'') != std::string_view::npos;
}

/// Nobody is asked twice about a word: a no is what takes dictionaries longest.
Accepts remembering(const Accepts& accepts) {
  return [&accepts, answers = std::map<std::string, bool>()](const std::string& word) mutable {
    const auto [answer, isNew] = answers.try_emplace(word, false);
    if (isNew) answer->second = accepts(word);
    return answer->second;
  };
}

/// In small letters or as a name.
bool isInDictionaries(const std::string& word, const Accepts& accepts) {
  return accepts(word) || accepts(capitalised(word));
}

bool isPossessive(const WordIndex& index, std::string_view word) {
  return word.ends_with("'s") && isKnown(index, word.substr(0, word.size() - 2));
}

/// Dictionaries write it with a capital only.
bool isName(const std::string& word, const Accepts& accepts) {
  return !accepts(word) && accepts(capitalised(word));
}

/// Names are never meant by small letters; the few best are looked at only.
std::vector<Candidate> withoutNames(std::vector<Candidate> all, const Accepts& accepts) {
  std::vector<Candidate> kept;
  for (Candidate& candidate : all) {
    if (kept.size() == kMostCandidates) break;
    if (kept.size() >= 2 || !isName(candidate.word, accepts)) kept.push_back(std::move(candidate));
  }
  return kept;
}

/// Those that will be among the best are to come early.
float promise(const WordIndex::Entry& entry) {
  constexpr float kUsualCost = 5;
  return kFrequencyWeight * entry.logFrequency - kUsualCost * static_cast<float>(entry.slips);
}

bool isBetter(const Candidate& one, const Candidate& other) {
  return one.score != other.score ? one.score > other.score : one.word < other.word;
}

/// Nothing but letters typed twice, or once in place of twice.
bool isDoubling(std::string_view one, std::string_view other) {
  const auto undoubled = [](std::string_view word) {
    std::string letters(word);
    letters.erase(std::unique(letters.begin(), letters.end()), letters.end());
    return letters;
  };
  return undoubled(one) == undoubled(other);
}

/// The one is the other with a letter before or behind it, as names of functions have.
bool isOtherwiseWhole(std::string_view longer, std::string_view shorter) {
  return longer.size() == shorter.size() + 1 &&
         (longer.ends_with(shorter) || longer.starts_with(shorter));
}

Bounds operator+(const Bounds& one, const Bounds& other) {
  return {one.floor + other.floor, one.lead + other.lead};
}

Bounds boundsFor(std::size_t letters, bool doubtful, Writing writing) {
  const auto* const row = std::ranges::lower_bound(kBounds, letters, {}, &BoundsRow::mostLetters);
  const Bounds bounds = doubtful ? row->doubtful : row->plain;
  return bounds + kForWriting[static_cast<std::size_t>(writing)];
}

Rule ruleOf(const Judgement& judgement) {
  if (judgement.ranked.front().score < judgement.needed.floor) return Rule::BelowFloor;
  return judgement.lead() < judgement.needed.lead ? Rule::NarrowLead : Rule::Sure;
}

}  // namespace

float Judgement::lead() const {
  if (ranked.empty()) return 0;
  const float second = ranked.size() < 2 ? ranked[0].score - kAlone : ranked[1].score;
  return ranked[0].score - std::max(second, own);
}

float Decision::score(std::string_view candidate, std::string_view typed) const {
  return kFrequencyWeight * index_.logFrequency(candidate).value_or(0) -
         cost_.between(candidate, typed);
}

/// The best first, `most` at most. Who can't be among them is given up half-way.
std::vector<Candidate> Decision::best(const std::vector<WordIndex::Entry>& entries,
                                      std::string_view word, std::size_t most) const {
  std::vector<Candidate> best;  // a heap, the worst in front
  for (const auto& entry : entries) {
    const float common = kFrequencyWeight * entry.logFrequency;
    const bool full = best.size() == most;
    const Cost limit = full ? common - best.front().score : EditCost::kNoLimit;
    const Cost cost = cost_.between(entry.word, word, limit);
    if (cost > limit) continue;
    best.push_back({std::string(entry.word), common - cost});
    std::ranges::push_heap(best, isBetter);
    if (!full) continue;
    std::ranges::pop_heap(best, isBetter);
    best.pop_back();
  }
  std::ranges::sort_heap(best, isBetter);
  return best;
}

/// Names are seldom so many that more has to be looked at.
std::vector<Candidate> Decision::rank(std::string_view word, const Accepts& accepts) const {
  auto entries = index_.near(word);
  std::erase_if(entries, [word](const auto& entry) { return !keepsApostrophe(word, entry.word); });
  std::ranges::sort(entries, std::ranges::greater(), promise);
  for (std::size_t most = 2 * kMostCandidates;; most *= 4) {
    auto found = best(entries, word, most);
    const bool all = found.size() < most;
    auto kept = withoutNames(std::move(found), accepts);
    if (all || kept.size() == kMostCandidates) return kept;
  }
}

/// The far end of the word list has what the dictionaries for good reason haven't: there its word
/// counts for no more than a candidate does.
bool Decision::exists(std::string_view word, const Accepts& accepts) const {
  const auto found = index_.logFrequency(word);
  if (!found) return isPossessive(index_, word);
  return *found >= kSurelyAWord || isInDictionaries(std::string(word), accepts);
}

bool Decision::isDoubtful(std::string_view word, std::string_view best) const {
  if (isDoubling(word, best)) return false;
  return isOtherwiseWhole(word, best) || isOtherwiseWhole(best, word) ||
         isMadeOfKnown(index_, word, best);
}

/// A form of the best or of a word beside it, a word of another language, or written for one that
/// only programs know: none of these is a slip.
bool Decision::isItself(std::string_view word, const Judgement& judgement,
                        const Accepts& accepts) const {
  const std::string& best = judgement.ranked.front().word;
  if (judgement.doubtful && differInEnding(word, best)) return true;
  if (!isDoubling(word, best) && isRegularForm(index_, word)) return true;
  if (endsForeign(word, best) || differInSpelling(word, best)) return true;
  return !isInDictionaries(best, accepts) && !isWholeWord(index_, best);
}

Judgement Decision::judge(std::string_view word, Writing writing, const Accepts& asked) const {
  const Accepts accepts = remembering(asked);
  Judgement judgement;
  if (!isWord(word)) {
    judgement.rule = Rule::NotAWord;
  } else if (exists(word, accepts)) {
    judgement.rule = Rule::Known;
  } else {
    judgement.ranked = rank(word, accepts);
    const auto own = index_.logFrequency(word);
    if (own) judgement.own = kFrequencyWeight * *own;
    if (judgement.ranked.empty()) return judgement;
    judgement.doubtful = isDoubtful(word, judgement.ranked.front().word);
    judgement.needed = boundsFor(word.size(), judgement.doubtful, writing);
    judgement.rule = ruleOf(judgement);
    if (judgement.rule == Rule::Sure && isItself(word, judgement, accepts)) {
      judgement.rule = Rule::Itself;
    }
  }
  return judgement;
}

}  // namespace quorvane::corrections
