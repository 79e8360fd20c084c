#include <algorithm>

#include "src/completion/KeySort.h"
#include "src/completion/TextHead.h"
#include "src/completion/WordTable.h"
#include "src/completion/WordTable_Layout.h"

namespace quorvane {
namespace {

using Indexes = std::vector<std::uint32_t>;

constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

/// Goes through the words of one source in the order of their bytes.
class SortedWords {
 public:
  explicit SortedWords(const TextPile& words) : words_(words), order_(words.sorted()) {}

  [[nodiscard]] bool atEnd() const { return next_ == order_.size(); }
  [[nodiscard]] std::string_view word() const { return words_[order_[next_]]; }
  /// The index of the word, which is passed over.
  std::uint32_t take() { return order_[next_++]; }

 private:
  const TextPile& words_;
  Indexes order_;
  std::size_t next_ = 0;
};

/// The words of both sources, in the order of their bytes: where each of them has it, or kNone.
struct United {
  Indexes inList;
  Indexes inTable;
};

United unite(const TextPile& list, const TextPile& table) {
  United united;
  united.inList.reserve(table.size());
  united.inTable.reserve(table.size());
  SortedWords left(list);
  SortedWords right(table);
  while (!left.atEnd() || !right.atEnd()) {
    const int compared = left.atEnd() ? 1 : right.atEnd() ? -1 : left.word().compare(right.word());
    united.inList.push_back(compared <= 0 ? left.take() : kNone);
    united.inTable.push_back(compared >= 0 ? right.take() : kNone);
  }
  return united;
}

bool isTableItself(const United& united, const FrequencyTable& table) {
  if (united.inTable.size() != table.words.size()) return false;
  std::uint32_t next = 0;
  return std::ranges::all_of(united.inTable, [&next](std::uint32_t i) { return i == next++; });
}

/// What the table says of all united words; nothing of those that only the list has.
FrequencyTable tableOf(const United& united, const TextPile& list, const FrequencyTable& table) {
  FrequencyTable result;
  for (std::size_t i = 0; i < united.inList.size(); ++i) {
    const std::uint32_t known = united.inTable[i];
    result.words.add(known == kNone ? list[united.inList[i]] : table.words[known]);
    result.frequencies.push_back(known == kNone ? 0 : table.frequencies[known]);
    result.annotations.add(known == kNone ? "" : table.annotations[known]);
  }
  return result;
}

/// The words of the list, by falling frequency, then by their place in it.
std::vector<Keyed> byRank(const Indexes& inList, const std::vector<std::int32_t>& frequencies,
                          std::size_t listSize) {
  std::vector<Keyed> words(listSize, Keyed{0, kNone});
  for (std::size_t i = 0; i < inList.size(); ++i) {
    if (inList[i] == kNone) continue;
    const auto falling = static_cast<std::uint64_t>(std::int64_t{INT32_MAX} - frequencies[i]);
    words[inList[i]] = {falling, static_cast<std::uint32_t>(i)};
  }
  std::erase_if(words, [](const Keyed& word) { return word.index == kNone; });
  sortByKey(words);
  return words;
}

/// Do all differences of two frequencies fit 32 bits?
bool lieTogether(const std::vector<Keyed>& words) {
  return words.empty() || words.back().key - words.front().key <= INT32_MAX;
}

struct Blocks {
  Indexes ranks;
  std::vector<std::uint8_t> orders;
  Indexes minima;
};

Blocks blocksOf(const std::vector<Keyed>& words, std::size_t size) {
  Blocks blocks{Indexes(size, kNoRank), std::vector<std::uint8_t>(size),
                Indexes((size + kBlock - 1) / kBlock, kNoRank)};
  std::vector<std::size_t> filled(blocks.minima.size());
  const auto putNext = [&](std::size_t index) {
    const std::size_t block = index / kBlock;
    blocks.orders[block * kBlock + filled[block]++] = static_cast<std::uint8_t>(index % kBlock);
  };
  for (std::uint32_t rank = 0; rank < words.size(); ++rank) {
    const std::uint32_t index = words[rank].index;
    blocks.ranks[index] = rank;
    if (filled[index / kBlock] == 0) blocks.minima[index / kBlock] = rank;
    putNext(index);
  }
  for (std::size_t index = 0; index < size; ++index) {
    if (blocks.ranks[index] == kNoRank) putNext(index);
  }
  return blocks;
}

std::vector<std::uint64_t> headsOfBlocks(const TextPile& words) {
  std::vector<std::uint64_t> heads;
  for (std::size_t i = 0; i < words.size(); i += kBlock) heads.push_back(headOf(words[i]));
  return heads;
}

}  // namespace

std::unique_ptr<FileData> WordTable::make(const TextPile& list, const FrequencyTable& frequencies,
                                          std::string_view key) {
  const United united = unite(list, frequencies.words);
  FrequencyTable made;
  const bool isReady = isTableItself(united, frequencies);
  if (!isReady) made = tableOf(united, list, frequencies);
  const FrequencyTable& table = isReady ? frequencies : made;
  const std::vector<Keyed> words = byRank(united.inList, table.frequencies, list.size());
  const Blocks blocks = blocksOf(words, table.words.size());
  const std::vector<std::uint64_t> heads = headsOfBlocks(table.words);
  const Indexes ranked{lieTogether(words) ? 1U : 0U};
  return Snapshot::make(
      kWordTable, key,
      {asBytes(table.words.bytes()), asBytes(table.words.offsets()), asBytes(blocks.ranks),
       asBytes(blocks.orders), asBytes(blocks.minima), asBytes(heads), asBytes(table.frequencies),
       asBytes(table.annotations.bytes()), asBytes(table.annotations.offsets()), asBytes(ranked)});
}

}  // namespace quorvane
