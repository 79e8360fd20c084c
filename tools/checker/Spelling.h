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

}  // namespace quorvane::checker
