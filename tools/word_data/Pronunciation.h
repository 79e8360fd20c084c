#pragma once
// Phonetic symbols: the pronouncing dictionary's phones turned into IPA, with stress marks before
// the syllable.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "tools/word_data/Tables.h"

namespace quorvane::word_data {

/// The IPA of phones such as "R AH0 S IY1 V"; nothing where one of them is unknown. A word of one
/// syllable bears no mark.
std::optional<std::string> ipaOfPhones(std::string_view phones);

class Pronunciations {
 public:
  /// `packages` is a node_modules folder; without the dictionary's package nothing has a
  /// pronunciation. Throws SourceError.
  Pronunciations(const std::filesystem::path& packages, const Tables& tables);

  bool isEmpty() const { return ipa_.empty(); }
  /// "" where it is unknown.
  std::string ipa(const std::string& word) const;

 private:
  void read(const std::filesystem::path& path);

  std::unordered_map<std::string, std::string> ipa_;
};

}  // namespace quorvane::word_data
