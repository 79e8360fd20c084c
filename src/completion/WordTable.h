#pragma once
// All words that completion knows, in the order of their bytes: those of the word list, each with
// its rank, and those that only the frequency table has. A rank is a word's place when the whole
// word list is sorted by falling frequency, words of equal frequency in the order of the list. So
// the words with a prefix are one run of the table, and the first of them those of least rank.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "src/completion/Snapshot.h"
#include "src/completion/TextList.h"

namespace quorvane {

class WordTable {
 public:
  /// As all that follows, throws DamagedSnapshot.
  WordTable(std::unique_ptr<FileData> file, std::string_view key);

  /// Do the ranks say what comparing two frequencies by their 32-bit difference would say? They do
  /// as long as no difference overflows.
  [[nodiscard]] bool ranked() const;
  /// How many words firstWithPrefix gives at most.
  static constexpr std::size_t kMost = 51;
  /// The words of the word list that begin with `prefix`: the first by rank, in that order.
  [[nodiscard]] std::vector<std::u16string> firstWithPrefix(std::string_view prefix) const;

  /// 0 for an unknown word.
  [[nodiscard]] std::int32_t frequency(std::string_view word) const;
  /// Phonetic symbol, then translation; empty for an unknown word. Lives as long as the table.
  [[nodiscard]] TextList annotation(std::string_view word) const;

 private:
  struct Run {
    std::size_t first;
    std::size_t end;
  };
  /// A word that may come next: its rank in the upper half, so that the least one comes first; in
  /// the lower half its place, for `mergeBlocks` that when each block of words is sorted by rank.
  using Next = std::uint64_t;

  [[nodiscard]] Run runOf(std::string_view prefix) const;
  template <class Visit>
  void sortRun(Run run, Visit visit) const;
  template <class Visit>
  void mergeBlocks(Run run, Visit visit) const;
  [[nodiscard]] std::vector<Next> firstOfBlocks(Run run) const;
  [[nodiscard]] Next nextOfBlock(std::size_t start, std::size_t position, Run run) const;

  std::unique_ptr<const Snapshot> snapshot_;
  TextArray words_;
  Numbers<std::uint32_t> ranks_;
  Numbers<std::uint8_t> orders_;
  Numbers<std::uint32_t> blockMinima_;
  Numbers<std::int32_t> frequencies_;
  TextArray annotations_;
  Numbers<std::uint64_t> blockHeads_;
  Numbers<std::uint32_t> ranked_;
};

}  // namespace quorvane
