#include "tools/corrections/WordIndex.h"

#include <algorithm>

#include "tools/corrections/EditCost.h"
#include "tools/corrections/WordIndex_Layout.h"

namespace quorvane::corrections {

WordIndex::WordIndex(std::unique_ptr<FileData> file, std::string_view key)
    : snapshot_(std::make_unique<Snapshot>(std::move(file), kWordIndex, key)),
      words_(*snapshot_, kWords),
      frequencies_(*snapshot_, kFrequencies),
      buckets_(*snapshot_, kBuckets),
      entries_(*snapshot_, kEntries) {}

std::optional<float> WordIndex::logFrequency(std::string_view word) const {
  const auto index = words_.find(word);
  if (!index) return std::nullopt;
  return corrections::logFrequency(frequencies_[*index]);
}

std::vector<WordIndex::Entry> WordIndex::near(std::string_view typed) const {
  const std::size_t slips = mostSlipsIn(typed);
  std::vector<std::uint32_t> found;
  visitRemains(typed, slips, [&](std::string_view rest) {
    const auto ends = buckets_.slice(bucketOf(rest), 2);
    if (ends[0] > ends[1]) throw DamagedSnapshot("a bucket ends before it begins");
    const auto entries = entries_.slice(ends[0], ends[1] - ends[0]);
    found.insert(found.end(), entries.begin(), entries.end());
  });
  std::ranges::sort(found);
  found.erase(std::unique(found.begin(), found.end()), found.end());

  std::vector<Entry> entries;
  for (const std::uint32_t index : found) {
    const std::string_view word = words_[index];
    if (word == typed || slipsBetween(word, typed, slips) > slips) continue;
    entries.push_back({word, corrections::logFrequency(frequencies_[index])});
  }
  return entries;
}

}  // namespace quorvane::corrections
