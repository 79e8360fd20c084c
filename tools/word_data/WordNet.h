#pragma once
// The dictionary: senses of words, and which word an irregular form belongs to.

#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tools/word_data/TextFile.h"

namespace quorvane::word_data {

/// In the order in which senses without a count stand.
enum class Part { Noun, Verb, Adjective, Adverb };
constexpr std::array<Part, 4> Parts{Part::Noun, Part::Verb, Part::Adjective, Part::Adverb};

struct Sense {
  Part part = Part::Noun;
  int number = 0;          ///< from 1, the commonest sense of its part first
  int count = 0;           ///< how often tagged texts have it
  std::string_view gloss;  ///< with its examples
  bool offensive = false;  ///< marked as used to hurt, or as obscene
};

struct BaseForm {
  Part part = Part::Noun;
  std::string word;
};

class WordNet {
 public:
  /// Throws SourceError.
  explicit WordNet(const std::filesystem::path& folder);

  /// Commonest first; empty for a word that is no headword.
  const std::vector<Sense>& senses(const std::string& word) const;
  /// What the word is an irregular form of: "went" is of "go".
  const std::vector<BaseForm>& irregularBases(const std::string& word) const;

 private:
  using Senses = std::unordered_map<std::string, std::vector<Sense>>;

  void readPart(Part part, const std::filesystem::path& folder);
  void readIndexLine(Part part, const TextFile& index, std::size_t line, std::string_view data);
  void readExceptions(Part part, const std::filesystem::path& path);
  void readCounts(const std::filesystem::path& path);
  void sortSenses();

  std::array<std::unique_ptr<TextFile>, Parts.size()> data_;
  Senses senses_;
  std::unordered_map<std::string, std::vector<BaseForm>> irregular_;
};

}  // namespace quorvane::word_data
