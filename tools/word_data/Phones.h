#pragma once
// The phones of the pronouncing dictionary.

#include <optional>
#include <string>
#include <string_view>

namespace quorvane::word_data {

enum class Stress { None, Primary, Secondary };

struct Phone {
  std::string_view ipa;
  bool isVowel = false;
  Stress stress = Stress::None;
};

/// Of "AH0", "ER1", "CH" and so on: a vowel has its stress as a digit. Nothing for another text.
std::optional<Phone> phoneNamed(std::string_view name);

/// Whether a syllable can begin with these consonants, in IPA, written together.
bool isOnset(std::string_view consonants);

}  // namespace quorvane::word_data
