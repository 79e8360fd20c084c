#include "tools/word_data/Frequencies.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quorvane::word_data {
namespace {

constexpr double Scale = 1e9;
constexpr double NameFactor = 0.4;
constexpr int LeastAttested = 10;

int rankIn(const Ranks& ranks, const std::string& word) {
  const auto found = ranks.find(word);
  return found == ranks.end() ? 0 : found->second;
}

// From the level of the list that has the word: 10 gives 9, 80 gives 1.
int tailValue(const Levels& levels) {
  constexpr std::array<int, 8> LastLevels{10, 20, 35, 40, 50, 55, 60, 70};
  const int level = std::min({levels.word, levels.name, levels.abbreviation});
  const auto lower = std::ranges::lower_bound(LastLevels, level) - LastLevels.begin();
  return 9 - static_cast<int>(lower);
}

}  // namespace

// Fitted to the list's published total, its top count, and the count at which it ends.
double shareInBooks(int rank) { return rank > 0 ? 0.52 / std::pow(rank + 3.5, 1.3203) : 0; }

// Fitted to a curve of counts over ranks of subtitles.
double shareInSubtitles(int rank) { return rank > 0 ? 2.2925 / std::pow(rank + 18.5, 1.5067) : 0; }

bool Frequencies::isAttested(const std::string& word) const {
  return ranks_.books.contains(word) || ranks_.subtitles.contains(word);
}

// Books are full of short words of other languages and of abbreviations.
double Frequencies::bookRate(const std::string& word, double subtitleRate) const {
  const double rate = shareInBooks(rankIn(ranks_.books, word));
  if (word.size() > 3 || ranks_.subtitles.empty()) return rate;
  return subtitleRate > 0 ? std::min(rate, 4 * subtitleRate) : rate / 50;
}

double Frequencies::rate(const std::string& word) const {
  // Subtitles count "don't" as "don", and have no one-letter words.
  if (tables_.splitContractions.contains(word) && !ranks_.books.empty())
    return shareInBooks(rankIn(ranks_.books, word));
  const double subtitles = shareInSubtitles(rankIn(ranks_.subtitles, word));
  const double books = bookRate(word, subtitles);
  const bool both = !ranks_.books.empty() && !ranks_.subtitles.empty();
  return (subtitles + books) / (both ? 2 : 1);
}

int Frequencies::frequency(const std::string& word, const Levels& levels) const {
  if (!hasRanks() && tables_.functionWords.contains(word)) return LeastAttested;
  if (!isAttested(word)) return tailValue(levels);
  const bool nameOnly = levels.word == Levels::Absent && levels.name != Levels::Absent &&
                        !tables_.admitted.contains(word);
  const double factor = nameOnly ? NameFactor : 1;
  return std::max(LeastAttested, static_cast<int>(std::lround(rate(word) * factor * Scale)));
}

}  // namespace quorvane::word_data
