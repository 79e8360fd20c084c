#pragma once
// Which candidates become words of the list.

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "tools/word_data/Frequencies.h"
#include "tools/word_data/RankLists.h"
#include "tools/word_data/Scowl.h"
#include "tools/word_data/Tables.h"

namespace quorvane::word_data {

constexpr std::size_t WordCount = 227800;

struct Word {
  std::string text;
  int frequency = 0;  ///< -1: not to be offered
};

using WordTest = std::function<bool(const std::string&)>;

/// At most `count` words in the order of their letters: those that a rank list has, then the others
/// from common lists before rare ones, those with a definition first, short before long. None that
/// is offensive.
std::vector<Word> selectWords(const Candidates& candidates, const RankLists& ranks,
                              const Tables& tables, const WordTest& isDefined,
                              const WordTest& isOffensive, std::size_t count = WordCount);

/// The candidates that are, in the order of their letters. They have a frequency that says so.
std::vector<Word> offensiveWords(const Candidates& candidates, const WordTest& isOffensive);

}  // namespace quorvane::word_data
