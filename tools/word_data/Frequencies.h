#pragma once
// How common a word is: the two rank lists turned into rates, blended, and made whole numbers.
// Below about 100 the numbers are the model's tail and no measurement.

#include <string>

#include "tools/word_data/RankLists.h"
#include "tools/word_data/Scowl.h"
#include "tools/word_data/Tables.h"

namespace quorvane::word_data {

class Frequencies {
 public:
  /// Both must outlive this.
  Frequencies(const RankLists& ranks, const Tables& tables) : ranks_(ranks), tables_(tables) {}

  /// Whether a rank list has it.
  bool isAttested(const std::string& word) const;
  /// A billionth of all words in use; 10 and more for an attested word, 9 to 1 for another, by the
  /// level of its list. Without rank lists function words have 10.
  int frequency(const std::string& word, const Levels& levels) const;

 private:
  double rate(const std::string& word) const;
  double bookRate(const std::string& word, double subtitleRate) const;
  bool hasRanks() const { return !ranks_.books.empty() || !ranks_.subtitles.empty(); }

  const RankLists& ranks_;
  const Tables& tables_;
};

/// The share of running text that a word of this rank has.
double shareInBooks(int rank);
double shareInSubtitles(int rank);

}  // namespace quorvane::word_data
