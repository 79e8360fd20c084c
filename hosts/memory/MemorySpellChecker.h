#pragma once
// A spell checker that guesses what a test has told it.

#include <map>

#include "hosts/journal/Journal.h"
#include "platform/SpellChecker.h"

namespace quorvane::memory {

class MemorySpellChecker : public SpellChecker {
 public:
  explicit MemorySpellChecker(Journal& journal) : journal_(journal) {}

  std::vector<std::u16string> guessesForWordRange(NSRange range, const std::u16string& text,
                                                  std::string_view language,
                                                  std::int64_t documentTag) override;

  std::map<std::u16string, std::vector<std::u16string>> guesses;  ///< by word, English ones

 private:
  Journal& journal_;
};

}  // namespace quorvane::memory
