#pragma once
// Words that the user's own dictionaries add to those of the spell checker.

#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "tools/checker/Spelling.h"

namespace quorvane::checker {

using WordSet = std::unordered_set<std::string>;

/// Adds the words of a file, one a line, in UTF-8 with straight or curly apostrophes. How many
/// lines are none: longer than 63 bytes, or with a blank or a control character.
std::size_t readWords(std::string_view file, WordSet& words);

class SpellingWithWords final : public Spelling {
 public:
  /// `words` is asked as it is at each time.
  SpellingWithWords(std::unique_ptr<Spelling> spelling, const WordSet& words)
      : spelling_(std::move(spelling)), words_(words) {}

  bool accepts(const std::string& word) override {
    return words_.contains(word) || spelling_->accepts(word);
  }
  std::vector<std::string> suggestions(const std::string& word) override {
    return spelling_->suggestions(word);
  }

 private:
  std::unique_ptr<Spelling> spelling_;
  const WordSet& words_;
};

}  // namespace quorvane::checker
