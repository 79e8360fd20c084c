#include "tools/word_data/Selection.h"

#include <algorithm>
#include <tuple>

#include "tools/word_data/PlainWord.h"

namespace quorvane::word_data {
namespace {

// An abbreviation is written as a word only if it is among so many of the subtitles.
constexpr int AbbreviationRanks = 6000;
// Without rank lists names of lists above this level are too rare.
constexpr int NameLevel = 50;
constexpr int RareLevel = 70;

class Gate {
 public:
  Gate(const RankLists& ranks, const Tables& tables, const Frequencies& frequencies)
      : ranks_(ranks), tables_(tables), frequencies_(frequencies) {}

  bool lets(const std::string& word, const Levels& levels) const {
    if (tables_.admitted.contains(word) && frequencies_.isAttested(word)) return true;
    if (word.size() == 1 && word != "a" && word != "i") return false;
    if (!hasVowel(word) && !tables_.vowelless.contains(word)) return false;
    return levels.word != Levels::Absent || letsName(word, levels) ||
           letsAbbreviation(word, levels);
  }

 private:
  bool letsName(const std::string& word, const Levels& levels) const {
    if (levels.name == Levels::Absent) return false;
    if (ranks_.books.empty() && ranks_.subtitles.empty()) return levels.name <= NameLevel;
    return frequencies_.isAttested(word);
  }

  bool letsAbbreviation(const std::string& word, const Levels& levels) const {
    if (levels.abbreviation == Levels::Absent) return false;
    const auto found = ranks_.subtitles.find(word);
    return found != ranks_.subtitles.end() && found->second <= AbbreviationRanks;
  }

  const RankLists& ranks_;
  const Tables& tables_;
  const Frequencies& frequencies_;
};

struct Choice {
  Word word;
  bool attested;
  bool rare;
  bool undefined;

  auto order() const {
    return std::tuple(!attested, rare, undefined, word.text.size(), std::string_view(word.text));
  }
};

}  // namespace

std::vector<Word> selectWords(const Candidates& candidates, const RankLists& ranks,
                              const Tables& tables, const WordTest& isDefined,
                              const WordTest& isOffensive, std::size_t count) {
  const Frequencies frequencies(ranks, tables);
  const Gate gate(ranks, tables, frequencies);
  std::vector<Choice> choices;
  const auto consider = [&](const std::string& text, const Levels& levels) {
    if (!gate.lets(text, levels) || isOffensive(text)) return;
    choices.push_back({{text, frequencies.frequency(text, levels)},
                       frequencies.isAttested(text),
                       std::min(levels.word, levels.name) > RareLevel,
                       !isDefined(text)});
  };
  for (const auto& [text, levels] : candidates) consider(text, levels);
  for (const std::string& text : tables.admitted)
    if (!candidates.contains(text)) consider(text, {});
  std::ranges::sort(choices, {}, &Choice::order);
  choices.resize(std::min(choices.size(), count));
  std::vector<Word> words;
  words.reserve(choices.size());
  for (Choice& choice : choices) words.push_back(std::move(choice.word));
  std::ranges::sort(words, {}, &Word::text);
  return words;
}

std::vector<Word> offensiveWords(const Candidates& candidates, const WordTest& isOffensive) {
  std::vector<Word> words;
  for (const auto& [text, levels] : candidates)
    if (isOffensive(text)) words.push_back({text, -1});
  std::ranges::sort(words, {}, &Word::text);
  return words;
}

}  // namespace quorvane::word_data
