#include "src/completion/NewWordTable.h"

#include <algorithm>

#include "src/completion/Snapshot.h"
#include "src/completion/TextHead.h"

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

std::vector<std::uint64_t> headsOfBlocks(const TextPile& words) {
  std::vector<std::uint64_t> heads;
  for (std::size_t i = 0; i < words.size(); i += kBlock) heads.push_back(headOf(words[i]));
  return heads;
}

}  // namespace

NewWordTable::NewWordTable(const TextPile& list, FrequencyTable frequencies)
    : table_(std::move(frequencies)) {
  const United united = unite(list, table_.words);
  if (!isTableItself(united, table_)) table_ = tableOf(united, list, table_);
  blockHeads_ = headsOfBlocks(table_.words);
  const std::vector<Keyed> words = byRank(united.inList, table_.frequencies, list.size());
  ranked_ = {lieTogether(words) ? 1U : 0U};
  rank(words);
}

void NewWordTable::rank(const std::vector<Keyed>& words) {
  const std::size_t size = table_.words.size();
  ranks_.assign(size, kNoRank);
  orders_.resize(size);
  blockMinima_.assign(blockHeads_.size(), kNoRank);
  std::vector<std::size_t> filled(blockHeads_.size());
  const auto putNext = [&](std::size_t index) {
    const std::size_t block = index / kBlock;
    orders_[block * kBlock + filled[block]++] = static_cast<std::uint8_t>(index % kBlock);
  };
  for (std::uint32_t rank = 0; rank < words.size(); ++rank) {
    const std::uint32_t index = words[rank].index;
    ranks_[index] = rank;
    blockMinima_[index / kBlock] = std::min(blockMinima_[index / kBlock], rank);
    putNext(index);
  }
  for (std::size_t index = 0; index < size; ++index) {
    if (ranks_[index] == kNoRank) putNext(index);
  }
}

std::vector<std::span<const std::uint8_t>> NewWordTable::sections() const {
  return {asBytes(table_.words.bytes()),
          asBytes(table_.words.offsets()),
          asBytes(ranks_),
          asBytes(orders_),
          asBytes(blockMinima_),
          asBytes(blockHeads_),
          asBytes(table_.frequencies),
          asBytes(table_.annotations.bytes()),
          asBytes(table_.annotations.offsets()),
          asBytes(ranked_)};
}

}  // namespace quorvane
