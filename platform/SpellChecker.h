#pragma once
// NSSpellChecker.

#include <string>
#include <string_view>
#include <vector>

#include "platform/MacTypes.h"

namespace quorvane {

class SpellChecker {
 public:
  virtual ~SpellChecker() = default;

  /// Corrections of the word in `range` of `text`, the likeliest first; empty where there are none
  /// or the language has no dictionary. `documentTag` 0: no document.
  virtual std::vector<std::u16string> guessesForWordRange(NSRange range, const std::u16string& text,
                                                          std::string_view language,
                                                          std::int64_t documentTag) = 0;
};

}  // namespace quorvane
