#include <algorithm>
#include <numeric>

#include "src/completion/TextHead.h"
#include "src/completion/WordTable.h"
#include "src/completion/WordTable_Layout.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

/// A word, and where it is in the two sources.
struct Union {
  std::string_view word;
  std::uint32_t inList = kNone;
  std::uint32_t inFrequencies = kNone;
};

/// Goes through one source in the order of the words' bytes.
class SortedWords {
 public:
  explicit SortedWords(const TextPile& words) : words_(words), order_(words.sorted()) {}

  [[nodiscard]] bool atEnd() const { return next_ == order_.size(); }
  [[nodiscard]] std::string_view word() const { return words_[order_[next_]]; }
  /// Passes over `word`; gives its last index, kNone where it isn't the next one.
  std::uint32_t take(std::string_view word) {
    std::uint32_t index = kNone;
    while (!atEnd() && this->word() == word) index = order_[next_++];
    return index;
  }

 private:
  const TextPile& words_;
  std::vector<std::uint32_t> order_;
  std::size_t next_ = 0;
};

std::vector<Union> unite(const TextPile& list, const TextPile& frequencies) {
  std::vector<Union> result;
  result.reserve(std::max(list.size(), frequencies.size()));
  SortedWords left(list);
  SortedWords right(frequencies);
  while (!left.atEnd() || !right.atEnd()) {
    Union next;
    next.word = left.atEnd()    ? right.word()
                : right.atEnd() ? left.word()
                                : std::min(left.word(), right.word());
    next.inList = left.take(next.word);
    next.inFrequencies = right.take(next.word);
    result.push_back(next);
  }
  return result;
}

/// Sorts the words of the list by falling frequency, then by their place in it: all in one number.
std::vector<std::uint32_t> ranksOf(const std::vector<Union>& words,
                                   const std::vector<std::int32_t>& frequencies) {
  std::vector<std::uint64_t> order;
  std::vector<std::uint32_t> indexOf(words.size());  // by place in the list
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::uint32_t place = words[i].inList;
    if (place == kNone) continue;
    const auto falling = static_cast<std::uint32_t>(std::int64_t{INT32_MAX} - frequencies[i]);
    order.push_back((std::uint64_t{falling} << 32) | place);
    indexOf[place] = static_cast<std::uint32_t>(i);
  }
  std::sort(order.begin(), order.end());
  std::vector<std::uint32_t> ranks(words.size(), kNoRank);
  for (std::size_t rank = 0; rank < order.size(); ++rank) {
    ranks[indexOf[static_cast<std::uint32_t>(order[rank])]] = static_cast<std::uint32_t>(rank);
  }
  return ranks;
}

std::vector<std::uint8_t> ordersOfBlocks(const std::vector<std::uint32_t>& ranks) {
  std::vector<std::uint8_t> orders(ranks.size());
  for (std::size_t start = 0; start < ranks.size(); start += kBlock) {
    const auto order = std::span(orders).subspan(start, std::min(kBlock, ranks.size() - start));
    std::iota(order.begin(), order.end(), std::uint8_t{0});
    std::ranges::sort(order, {}, [&](std::uint8_t place) { return ranks[start + place]; });
  }
  return orders;
}

std::vector<std::uint32_t> minimaOfBlocks(const std::vector<std::uint32_t>& ranks) {
  std::vector<std::uint32_t> minima;
  for (std::size_t start = 0; start < ranks.size(); start += kBlock) {
    const std::size_t size = std::min(kBlock, ranks.size() - start);
    minima.push_back(std::ranges::min(std::span(ranks).subspan(start, size)));
  }
  return minima;
}

std::vector<std::uint64_t> headsOfBlocks(const TextPile& words) {
  std::vector<std::uint64_t> heads;
  for (std::size_t i = 0; i < words.size(); i += kBlock) heads.push_back(headOf(words[i]));
  return heads;
}

/// Does no difference of two frequencies of words of the list overflow 32 bits?
bool lieTogether(const std::vector<Union>& words, const std::vector<std::int32_t>& frequencies) {
  std::int64_t least = INT32_MAX;
  std::int64_t greatest = INT32_MIN;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i].inList == kNone) continue;
    least = std::min<std::int64_t>(least, frequencies[i]);
    greatest = std::max<std::int64_t>(greatest, frequencies[i]);
  }
  return greatest - least <= INT32_MAX;
}

}  // namespace

std::unique_ptr<FileData> WordTable::make(const TextPile& list, const FrequencyTable& table,
                                          std::string_view key) {
  const std::vector<Union> all = unite(list, table.words);
  TextPile words;
  TextPile annotations;
  std::vector<std::int32_t> frequencies;
  for (const Union& one : all) {
    const bool known = one.inFrequencies != kNone;
    words.add(one.word);
    annotations.add(known ? table.annotations[one.inFrequencies] : "");
    frequencies.push_back(known ? table.frequencies[one.inFrequencies] : 0);
  }
  const std::vector<std::uint32_t> ranks = ranksOf(all, frequencies);
  const std::vector<std::uint32_t> minima = minimaOfBlocks(ranks);
  const std::vector<std::uint64_t> heads = headsOfBlocks(words);
  const std::vector<std::uint32_t> ranked{lieTogether(all, frequencies) ? 1U : 0U};
  const std::vector<std::uint8_t> orders = ordersOfBlocks(ranks);
  return Snapshot::make(
      kWordTable, key,
      {asBytes(words.bytes()), asBytes(words.offsets()), asBytes(ranks), asBytes(orders),
       asBytes(minima), asBytes(heads), asBytes(frequencies), asBytes(annotations.bytes()),
       asBytes(annotations.offsets()), asBytes(ranked)});
}

}  // namespace quorvane
