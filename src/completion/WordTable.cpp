#include "src/completion/WordTable.h"

#include <algorithm>
#include <array>
#include <functional>

#include "src/completion/TextHead.h"
#include "src/completion/WordTable_Layout.h"

namespace quorvane {
namespace {

/// For what a caller puts before the words.
constexpr std::size_t kRoomInFront = 2;

std::uint64_t nextOf(std::uint32_t rank, std::size_t place) {
  return (std::uint64_t{rank} << 32) | static_cast<std::uint32_t>(place);
}

/// What isn't in the word list doesn't come at all.
constexpr std::uint64_t kNothing = std::uint64_t{kNoRank} << 32;

std::size_t placeOf(std::uint64_t next) { return static_cast<std::uint32_t>(next); }

std::size_t blocksOf(std::size_t words) { return (words + kBlock - 1) / kBlock; }

}  // namespace

WordTable::WordTable(std::unique_ptr<FileData> file, std::string_view key)
    : snapshot_(std::make_unique<Snapshot>(std::move(file), kWordTable, key)),
      words_(*snapshot_, kWords),
      ranks_(*snapshot_, kRanks),
      orders_(*snapshot_, kOrders),
      blockMinima_(*snapshot_, kBlockMinima),
      frequencies_(*snapshot_, kFrequencies),
      annotations_(*snapshot_, kAnnotations),
      blockHeads_(*snapshot_, kBlockHeads),
      ranked_(*snapshot_, kRanked) {}

bool WordTable::ranked() const { return ranked_[0] != 0; }

std::vector<std::u16string> WordTable::firstWithPrefix(std::string_view prefix) const {
  const Run run = runOf(prefix);
  const std::size_t count = std::min(kMost, run.end - run.first);
  std::vector<std::u16string> result;
  result.reserve(count + kRoomInFront);
  const auto add = [&](std::size_t index) {
    const std::string_view word = words_[index];
    result.emplace_back(word.begin(), word.end());
  };
  if (run.end - run.first < kBlock) {
    sortRun(run, add);
  } else {
    mergeBlocks(run, add);
  }
  return result;
}

/// Visits the words of a short run by rank.
template <class Visit>
void WordTable::sortRun(Run run, Visit visit) const {
  std::array<Next, kBlock> words;
  std::size_t size = 0;
  for (const std::uint32_t rank : ranks_.slice(run.first, run.end - run.first)) {
    words[size] = nextOf(rank, run.first + size);
    ++size;
  }
  const auto sorted = std::span(words).first(size);
  std::ranges::sort(sorted);
  for (const Next next : sorted.first(std::min(size, kMost))) {
    if (next < kNothing) visit(placeOf(next));
  }
}

/// Visits the first words of a long run by rank. Each block has its words sorted, so that they only
/// need merging.
template <class Visit>
void WordTable::mergeBlocks(Run run, Visit visit) const {
  std::vector<Next> heap = firstOfBlocks(run);
  std::ranges::make_heap(heap, std::greater());
  for (std::size_t count = 0; count < kMost && !heap.empty(); ++count) {
    std::ranges::pop_heap(heap, std::greater());
    const std::size_t place = placeOf(heap.back());
    const std::size_t start = place - place % kBlock;
    visit(start + orders_[place]);
    heap.back() = nextOfBlock(start, place - start + 1, run);
    if (heap.back() < kNothing) {
      std::ranges::push_heap(heap, std::greater());
    } else {
      heap.pop_back();
    }
  }
}

/// Of each block that has part in the run.
std::vector<WordTable::Next> WordTable::firstOfBlocks(Run run) const {
  const std::size_t firstBlock = run.first / kBlock;
  const auto minima = blockMinima_.slice(firstBlock, blocksOf(run.end) - firstBlock);
  std::vector<Next> firsts;
  firsts.reserve(minima.size());
  for (std::size_t i = 0; i < minima.size(); ++i) {
    const std::size_t start = (firstBlock + i) * kBlock;
    const bool isWhole = start >= run.first && start + kBlock <= run.end;
    const Next next = isWhole ? nextOf(minima[i], start) : nextOfBlock(start, 0, run);
    if (next < kNothing) firsts.push_back(next);
  }
  return firsts;
}

/// From `position` on, what of the block lies in the run.
WordTable::Next WordTable::nextOfBlock(std::size_t start, std::size_t position, Run run) const {
  const std::size_t size = std::min(kBlock, orders_.size() - std::min(start, orders_.size()));
  if (position >= size) return kNothing;
  for (const std::uint8_t order : orders_.slice(start + position, size - position)) {
    const std::size_t index = start + order;
    if (index >= run.first && index < run.end) return nextOf(ranks_[index], start + position);
    ++position;
  }
  return kNothing;
}

/// The heads narrow it down to a few blocks, as far as eight bytes can.
WordTable::Run WordTable::runOf(std::string_view prefix) const {
  const auto heads = blockHeads_.slice(0, blockHeads_.size());
  const auto firstNotBefore = std::ranges::lower_bound(heads, headOf(prefix));
  const auto firstBehind = std::ranges::upper_bound(heads, headOf(prefix, 0xFF));
  const auto blocksBefore = static_cast<std::size_t>(firstNotBefore - heads.begin());
  const auto blocks = static_cast<std::size_t>(firstBehind - heads.begin());
  const std::size_t from = blocksBefore == 0 ? 0 : (blocksBefore - 1) * kBlock;
  const std::size_t to = std::min(blocks * kBlock, words_.size());
  if (from > to) throw DamagedSnapshot("blocks out of order");
  const auto isBefore = [prefix](auto word) { return word < prefix; };
  const auto hasPrefix = [prefix](auto word) { return word.starts_with(prefix); };
  const std::size_t first = words_.partitionPoint(from, to, isBefore);
  return {first, words_.partitionPoint(first, to, hasPrefix)};
}

std::int32_t WordTable::frequency(std::string_view word) const {
  const auto index = words_.find(word);
  return index ? frequencies_[*index] : 0;
}

TextList WordTable::annotation(std::string_view word) const {
  const auto index = words_.find(word);
  return index ? TextList(annotations_[*index]) : TextList();
}

}  // namespace quorvane
