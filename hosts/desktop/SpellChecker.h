#pragma once
// Spelling by Enchant.

#include <memory>

#include "platform/SpellChecker.h"

namespace quorvane::desktop {

/// "en" is "en_US"; other languages go by their own names. A dictionary is loaded when it is first
/// asked for, and kept.
class SpellChecker final : public quorvane::SpellChecker {
 public:
  SpellChecker();
  ~SpellChecker() override;
  SpellChecker(const SpellChecker&) = delete;
  SpellChecker& operator=(const SpellChecker&) = delete;

  /// At most 15, each in the script of the text. No guesses for a range outside `text`, for more
  /// than 100 units, and for control characters.
  std::vector<std::u16string> guessesForWordRange(NSRange range, const std::u16string& text,
                                                  std::string_view language,
                                                  std::int64_t documentTag) override;

 private:
  class Dictionaries;
  std::unique_ptr<Dictionaries> dictionaries_;  ///< null until the first word
};

}  // namespace quorvane::desktop
