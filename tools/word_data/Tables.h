#pragma once
// What no source says right, written by hand: the tables in data/. One entry a line, parts between
// tabs; "#" begins a comment line.

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace quorvane::word_data {

struct Tables {
  using WordSet = std::set<std::string, std::less<>>;

  /// Word -> its gloss lines, maybe none, in place of the dictionary's.
  std::map<std::string, std::vector<std::string>> functionWords;
  /// Word -> IPA, in place of the dictionary's; "" for none.
  std::map<std::string, std::string> pronunciations;
  /// Words that nobody is offered, beginnings of such words, and words that are none in spite of
  /// the dictionary.
  WordSet offensiveWords;
  WordSet offensiveStems;
  WordSet inoffensive;
  /// What counts as a word in spite of the lists, if it has a rank.
  WordSet admitted;
  /// What a list that splits at the apostrophe leaves of contractions ("don", "ve").
  WordSet splitContractions;
  /// Words without a vowel that are words all the same ("hmm").
  WordSet vowelless;

  bool isOffensive(const std::string& word) const;
};

/// Throws SourceError.
Tables readTables(const std::filesystem::path& folder);

}  // namespace quorvane::word_data
