#pragma once
// The lines that explain a word: "v. (receive) get something; come into possession of".

#include <string>
#include <string_view>
#include <vector>

#include "tools/word_data/Tables.h"
#include "tools/word_data/WordNet.h"

namespace quorvane::word_data {

class Glosses {
 public:
  /// Both must outlive this.
  Glosses(const WordNet& dictionary, const Tables& tables)
      : dictionary_(dictionary), tables_(tables) {}

  /// At most three, the commonest sense first: our own for a function word, else the dictionary's
  /// for the word, else those for the word that it is a form of. Where that word is much commoner
  /// than the form's own senses, its first sense comes before them.
  std::vector<std::string> lines(const std::string& word) const;

  /// Does our table say so, or the dictionary of the commonest sense, and no table otherwise?
  bool isOffensive(const std::string& word) const;

 private:
  /// A sense, and the base form to name with it, if any.
  struct Entry {
    const Sense* sense;
    std::string base;
  };
  using Entries = std::vector<Entry>;

  Entries baseEntries(const std::string& word, const std::vector<BaseForm>& bases) const;
  Entries entries(const std::string& word) const;

  const WordNet& dictionary_;
  const Tables& tables_;
};

/// A gloss as it is shown: without examples, plain quotation marks, at most 120 bytes.
std::string shownGloss(std::string_view gloss);

}  // namespace quorvane::word_data
