#include "tools/corrections/WordIndex.h"

#include <algorithm>
#include <bit>

#include "tools/corrections/EditCost.h"

namespace quorvane::corrections {

namespace {

/// A bit for each letter that comes in it.
std::uint32_t lettersIn(std::string_view word) {
  std::uint32_t letters = 0;
  for (const char c : word) letters |= 1U << (static_cast<std::uint8_t>(c) & 31U);
  return letters;
}

}  // namespace

WordIndex::WordIndex(std::unique_ptr<FileData> file, std::string_view key)
    : snapshot_(std::make_unique<Snapshot>(std::move(file), kWordIndex, key)),
      words_(*snapshot_, kWords),
      frequencies_(*snapshot_, kFrequencies),
      buckets_(*snapshot_, kBuckets),
      entries_(*snapshot_, kEntries),
      sounds_(*snapshot_, kSounds) {}

std::optional<float> WordIndex::logFrequency(std::string_view word) const {
  const auto index = words_.find(word);
  if (!index) return std::nullopt;
  return corrections::logFrequency(frequencies_[*index]);
}

std::optional<bool> WordIndex::beginsWithVowel(std::string_view word) const {
  const auto index = words_.find(word);
  if (!index || sounds_[*index] == FirstSound::Unknown) return std::nullopt;
  return sounds_[*index] == FirstSound::Vowel;
}

std::vector<std::uint32_t> WordIndex::candidates(std::string_view typed, std::size_t slips) const {
  std::vector<std::uint32_t> found;
  std::vector<bool> seen(words_.size());
  visitRemains(typed, slips, [&](std::string_view rest) {
    const auto ends = buckets_.slice(bucketOf(rest), 2);
    if (ends[0] > ends[1]) throw DamagedSnapshot("a bucket ends before it begins");
    for (const PackedEntry entry : entries_.slice(ends[0], ends[1] - ends[0])) {
      const std::size_t size = sizeIn(entry);
      const std::uint32_t word = wordIn(entry);
      if (size > typed.size() + slips || typed.size() > size + slips) continue;
      if (word >= seen.size() || seen[word]) continue;
      seen[word] = true;
      found.push_back(word);
    }
  });
  return found;
}

std::vector<WordIndex::Entry> WordIndex::near(std::string_view typed) const {
  const std::size_t slips = mostSlipsIn(typed);
  const std::uint32_t letters = lettersIn(typed);
  std::vector<Entry> entries;
  for (const std::uint32_t index : candidates(typed, slips)) {
    const std::string_view word = words_[index];
    // A slip takes one letter out and brings one in at most.
    const auto others = static_cast<std::size_t>(std::popcount(lettersIn(word) ^ letters));
    if (others > 2 * slips || word == typed || slipsBetween(word, typed, slips) > slips) continue;
    entries.push_back({word, corrections::logFrequency(frequencies_[index])});
  }
  std::ranges::sort(entries, {}, &Entry::word);
  return entries;
}

}  // namespace quorvane::corrections
