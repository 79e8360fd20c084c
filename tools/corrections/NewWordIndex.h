#pragma once
// A word index that has yet to be written.

#include <span>
#include <string_view>
#include <vector>

#include "src/completion/FrequencyTable.h"
#include "tools/corrections/WordIndex_Layout.h"

namespace quorvane::corrections {

class NewWordIndex {
 public:
  static constexpr FourCharCode kKind = kWordIndex;

  /// What is no word of small letters and apostrophes is passed over; a word that comes twice
  /// counts as it comes last.
  explicit NewWordIndex(const FrequencyTable& words);

  [[nodiscard]] std::vector<std::span<const std::uint8_t>> sections() const;

 private:
  void fillBuckets();

  TextPile words_;
  std::vector<std::uint8_t> frequencies_;
  std::vector<std::uint32_t> buckets_;
  std::vector<PackedEntry> entries_;
  std::vector<FirstSound> sounds_;
  std::vector<std::uint32_t> letterSets_;
};

}  // namespace quorvane::corrections
