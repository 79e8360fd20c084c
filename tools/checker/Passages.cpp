#include "tools/checker/Passages.h"

#include <algorithm>
#include <array>
#include <span>

#include "tools/checker/WordRules.h"
#include "tools/corrections/Letters.h"

namespace quorvane::checker {

namespace {

/// What stands before the pronoun, and hardly before a variable.
constexpr auto kBeforeI = std::to_array<std::string_view>(
    {"although", "and", "because", "but", "could", "did", "dunno", "hope", "maybe", "shall",
     "should", "so", "than", "that", "think", "though", "would", "yes"});
constexpr auto kAfterI = std::to_array<std::string_view>(
    {"actually",  "agree",   "already",  "also",     "always",  "am",    "believe",    "can",
     "can't",     "could",   "couldn't", "did",      "didn't",  "do",    "don't",      "expect",
     "feel",      "felt",    "forgot",   "found",    "get",     "go",    "got",        "guess",
     "had",       "hadn't",  "hate",     "have",     "haven't", "heard", "hope",       "just",
     "knew",      "know",    "like",     "love",     "may",     "mean",  "might",      "must",
     "need",      "never",   "really",   "remember", "said",    "saw",   "see",        "should",
     "shouldn't", "suppose", "think",    "thought",  "told",    "tried", "understand", "want",
     "wanted",    "was",     "went",     "will",     "wonder",  "would"});
/// Behind these "of" is never right where a participle follows.
constexpr auto kCould = std::to_array<std::string_view>(
    {"could", "couldn't", "might", "must", "should", "shouldn't", "would", "wouldn't"});
/// These are nouns as well, or stand before "of necessity".
constexpr auto kAlsoNouns = std::to_array<std::string_view>({"might", "must"});
constexpr auto kParticiples = std::to_array<std::string_view>(
    {"asked",    "become", "been",   "begun",  "bought", "brought", "called", "come",    "done",
     "driven",   "eaten",  "fallen", "felt",   "found",  "given",   "gone",   "gotten",  "had",
     "happened", "heard",  "helped", "kept",   "known",  "liked",   "lost",   "loved",   "made",
     "paid",     "put",    "said",   "seen",   "slept",  "spent",   "stayed", "stopped", "taken",
     "thought",  "told",   "tried",  "wanted", "won"});
/// What may stand behind the letter a.
constexpr auto kBehindTheLetter = std::to_array<std::string_view>(
    {"after", "and", "are", "as",   "at", "each", "equals", "if",     "in", "into", "is",
     "isn't", "of",  "on",  "only", "or", "over", "until",  "unless", "up", "upon", "use"});
constexpr auto kOftenTwice = std::to_array<std::string_view>(
    {"bye", "far", "had", "no", "really", "that", "very", "so", "blah", "ha"});
/// The h that nobody speaks.
constexpr auto kSilentH = std::to_array<std::string_view>({"heir", "hone", "hono", "hour"});

bool contains(std::span<const std::string_view> words, std::string_view word) {
  return std::ranges::find(words, word) != words.end();
}

/// A word with one blank behind it, at the end of a text.
struct Previous {
  std::string spelt;
  std::size_t start = 0;
  bool opensSentence = false;
};

std::optional<Previous> previousWord(std::span<const std::uint8_t> text) {
  if (text.empty() || text.back() != ' ') return std::nullopt;
  TextRecord record{{text.begin(), text.end()}, text.size(), ' '};
  record.smartCharacters = true;
  const auto word = endedWord(record);
  if (!word || word->end + 1 != text.size() || word->joined) return std::nullopt;
  return Previous{spelling(text.subspan(word->start, word->end - word->start)), word->start,
                  word->opensSentence};
}

std::optional<Previous> previousWord(const TypedWord& word) { return previousWord(word.before); }

Passage passageFrom(const Previous& first, const TypedWord& word, const std::string& meantFirst,
                    bool certain) {
  return {first.start, first.spelt + ' ' + word.spelt, meantFirst + ' ' + word.spelt, certain};
}

bool endsClause(std::uint8_t key) { return key == '.' || key == '?' || key == '!'; }

bool beginsLikeItsSound(std::string_view word) {
  return std::string_view("aeio").find(word.front()) != std::string_view::npos ||
         contains(kSilentH, word.substr(0, 4));
}

}  // namespace

/// Alone it may be anybody's variable: a word before it or behind it tells.
std::optional<Passage> Passages::smallI(const TypedWord& word) const {
  const auto previous = previousWord(word);
  if (!previous) return std::nullopt;
  if (word.spelt == "i" && word.endedBy == ' ' && contains(kBeforeI, lowered(previous->spelt))) {
    return Passage{word.before.size(), "i", "I", true};
  }
  if (previous->spelt != "i" || !contains(kAfterI, word.spelt)) return std::nullopt;
  return passageFrom(*previous, word, "I", true);
}

/// "could of course" is right: the word behind tells, or that there is none.
std::optional<Passage> Passages::couldOf(const TypedWord& word) const {
  const auto previous = previousWord(word);
  if (!previous) return std::nullopt;
  if (word.spelt == "of") {
    const std::string could = lowered(previous->spelt);
    if (!contains(kCould, could) || contains(kAlsoNouns, could)) return std::nullopt;
    return Passage{previous->start, previous->spelt + " of", previous->spelt + " have",
                   endsClause(word.endedBy)};
  }
  if (previous->spelt != "of" || !contains(kParticiples, word.spelt)) return std::nullopt;
  const auto could = previousWord(std::span(word.before).first(previous->start));
  if (!could || !contains(kCould, lowered(could->spelt))) return std::nullopt;
  return Passage{could->start, could->spelt + " of " + word.spelt,
                 could->spelt + " have " + word.spelt, true};
}

/// "an" where "a" is right may be that a word has been left out: only the other way round is sure.
std::optional<Passage> Passages::article(const TypedWord& word) const {
  const auto previous = previousWord(word);
  if (!previous) return std::nullopt;
  const std::string typed = lowered(previous->spelt);
  const auto vowel = beginsWithVowel_(word.spelt);
  if (!vowel || typed != (*vowel ? "a" : "an") || contains(kBehindTheLetter, word.spelt)) {
    return std::nullopt;
  }
  const std::string article = previous->spelt.substr(0, 1) + (*vowel ? "n" : "");
  const bool isLetter = previous->spelt == "A" && !previous->opensSentence;
  return passageFrom(*previous, word, article,
                     *vowel && !isLetter && beginsLikeItsSound(word.spelt));
}

std::optional<Passage> Passages::doubledWord(const TypedWord& word) const {
  const auto previous = previousWord(word);
  if (!previous || lowered(previous->spelt) != word.spelt || contains(kOftenTwice, word.spelt)) {
    return std::nullopt;
  }
  return Passage{previous->start, previous->spelt + ' ' + word.spelt, previous->spelt, false};
}

std::optional<Passage> Passages::endingIn(const TypedWord& word) const {
  using Rule = std::optional<Passage> (Passages::*)(const TypedWord&) const;
  constexpr std::array<std::pair<bool CorrectionSwitches::*, Rule>, 4> kRules{{
      {&CorrectionSwitches::smallI, &Passages::smallI},
      {&CorrectionSwitches::couldOf, &Passages::couldOf},
      {&CorrectionSwitches::article, &Passages::article},
      {&CorrectionSwitches::doubledWord, &Passages::doubledWord},
  }};
  for (const auto& [on, rule] : kRules) {
    if (!(switches_.*on)) continue;
    if (auto passage = (this->*rule)(word)) return passage;
  }
  return std::nullopt;
}

}  // namespace quorvane::checker
