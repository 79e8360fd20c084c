#pragma once
// The spell checker that the stand-in asks.

#include <memory>
#include <string>
#include <vector>

namespace quorvane::checker {

class Spelling {
 public:
  virtual ~Spelling() = default;

  /// `word` is ASCII with straight apostrophes, here and below.
  virtual bool accepts(const std::string& word) = 0;
  /// The best first.
  virtual std::vector<std::string> suggestions(const std::string& word) = 0;
};

/// Enchant with the dictionary for `tag`, "en_US". Null where there is none.
std::unique_ptr<Spelling> openEnchant(const std::string& tag);

bool isEnglish(const std::string& tag);

/// That one, and for English those of the other English spellings that there are: what one of them
/// accepts is accepted, and the first suggests. Null where there is none for `tag`.
std::unique_ptr<Spelling> openDictionaries(const std::string& tag);

}  // namespace quorvane::checker
