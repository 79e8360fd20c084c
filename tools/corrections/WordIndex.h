#pragma once
// All words that are known to exist, how common each is, and a way from a mistyped word to those
// that may have been meant: two words are at most two slips apart only if taking up to two letters
// out of each can leave the same behind.

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "src/completion/Snapshot.h"
#include "tools/corrections/WordIndex_Layout.h"

namespace quorvane::corrections {

class WordIndex {
 public:
  /// As all that follows, throws DamagedSnapshot.
  WordIndex(std::unique_ptr<FileData> file, std::string_view key);

  [[nodiscard]] std::size_t size() const { return words_.size(); }
  /// The natural logarithm of its frequency. Empty for an unknown word.
  [[nodiscard]] std::optional<float> logFrequency(std::string_view word) const;

  /// Whether its first sound is a vowel. Empty where that isn't known.
  [[nodiscard]] std::optional<bool> beginsWithVowel(std::string_view word) const;

  struct Entry {
    std::string_view word;  ///< lives as long as the index
    float logFrequency = 0;
    std::size_t slips = 0;
  };
  /// The words within two slips of `typed`, a word, or within one where it is short; itself left
  /// out, each once, in no order.
  [[nodiscard]] std::vector<Entry> near(std::string_view typed) const;

 private:
  [[nodiscard]] std::vector<std::uint32_t> candidates(std::string_view typed,
                                                      std::size_t slips) const;

  std::unique_ptr<const Snapshot> snapshot_;
  TextArray words_;
  Numbers<std::uint8_t> frequencies_;
  Numbers<std::uint32_t> buckets_;
  Numbers<PackedEntry> entries_;
  Numbers<FirstSound> sounds_;
  Numbers<std::uint32_t> letterSets_;
};

}  // namespace quorvane::corrections
