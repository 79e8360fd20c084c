#pragma once
// Mistakes that show only beside another word: "i think", "could of been", "the the", "a apple".

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "tools/checker/CorrectionSwitches.h"
#include "tools/checker/WordChoice.h"

namespace quorvane::checker {

class Passages {
 public:
  /// Whether a word, in small letters, begins with the sound of a vowel. Empty: nobody knows.
  using VowelSound = std::function<std::optional<bool>(std::string_view)>;

  Passages(const CorrectionSwitches& switches, VowelSound beginsWithVowel)
      : switches_(switches), beginsWithVowel_(std::move(beginsWithVowel)) {}

  void use(const CorrectionSwitches& switches) { switches_ = switches; }
  /// The one that ends with `word`, which has just been typed.
  [[nodiscard]] std::optional<Passage> endingIn(const TypedWord& word) const;

 private:
  [[nodiscard]] std::optional<Passage> smallI(const TypedWord& word) const;
  [[nodiscard]] std::optional<Passage> couldOf(const TypedWord& word) const;
  [[nodiscard]] std::optional<Passage> article(const TypedWord& word) const;
  [[nodiscard]] std::optional<Passage> doubledWord(const TypedWord& word) const;

  CorrectionSwitches switches_;
  VowelSound beginsWithVowel_;
};

}  // namespace quorvane::checker
