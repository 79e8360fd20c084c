#pragma once
// How long words and sentences of a text are, and how easily it reads.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::checker {

struct Statistics {
  std::size_t characters = 0;  ///< letters and digits
  std::size_t words = 0;
  std::size_t syllables = 0;  ///< guessed by the spelling of English words
  /// In words, one for each sentence: it ends at a full stop, a question or an exclamation mark
  /// with white space or nothing behind it, and at an empty line.
  std::vector<std::size_t> sentences;
};

Statistics statisticsOf(std::u16string_view text);

/// 206.835 - 1.015 words a sentence - 84.6 syllables a word: R. Flesch, "A new readability
/// yardstick", Journal of Applied Psychology 32 (1948), 221-233. 0 for a text without words.
double readingEase(const Statistics& statistics);

std::size_t syllablesIn(std::u16string_view word);

/// A line for each fact.
std::vector<std::u16string> describeStatistics(const Statistics& statistics);
/// A bar for each sentence, no line longer than `columns`.
std::vector<std::u16string> drawSentenceLengths(const Statistics& statistics, std::size_t columns);

}  // namespace quorvane::checker
