#pragma once
// A word table that has yet to be written.

#include <cstdint>
#include <span>
#include <vector>

#include "src/completion/FrequencyTable.h"
#include "src/completion/KeySort.h"
#include "src/completion/WordTable_Layout.h"

namespace quorvane {

class NewWordTable {
 public:
  static constexpr FourCharCode kKind = kWordTable;

  /// `list`: the words of the word list, in its order, none of them twice.
  NewWordTable(const TextPile& list, FrequencyTable frequencies);

  [[nodiscard]] std::vector<std::span<const std::uint8_t>> sections() const;

 private:
  void rank(const std::vector<Keyed>& words);

  FrequencyTable table_;  ///< of all words, sorted
  std::vector<std::uint32_t> ranks_;
  std::vector<std::uint8_t> orders_;
  std::vector<std::uint32_t> blockMinima_;
  std::vector<std::uint64_t> blockHeads_;
  std::vector<std::uint32_t> ranked_;
};

}  // namespace quorvane
