#include "tools/corrections/WordIndex.h"

#include <algorithm>

#include "tools/corrections/SlipCount.h"

namespace quorvane::corrections {

namespace {

/// A slip changes at most two letters of a set, and one where it also changes the size.
constexpr std::size_t mostOthers(std::size_t slips, std::size_t one, std::size_t other) {
  return 2 * slips - (one < other ? other - one : one - other);
}

constexpr bool hasMoreThan(std::size_t count, std::uint32_t bits) {
  for (; bits != 0; bits &= bits - 1) {
    if (count-- == 0) return true;
  }
  return false;
}

}  // namespace

WordIndex::WordIndex(std::unique_ptr<FileData> file, std::string_view key)
    : snapshot_(std::make_unique<Snapshot>(std::move(file), kWordIndex, key)),
      words_(*snapshot_, kWords),
      frequencies_(*snapshot_, kFrequencies),
      buckets_(*snapshot_, kBuckets),
      entries_(*snapshot_, kEntries),
      sounds_(*snapshot_, kSounds),
      letterSets_(*snapshot_, kLetterSets) {}

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
  const std::uint32_t letters = lettersIn(typed);
  visitRemains(typed, slips, [&](std::string_view rest) {
    const auto ends = buckets_.slice(bucketOf(rest), 2);
    if (ends[0] > ends[1]) throw DamagedSnapshot("a bucket ends before it begins");
    for (const PackedEntry entry : entries_.slice(ends[0], ends[1] - ends[0])) {
      const std::size_t size = sizeIn(entry);
      const std::uint32_t word = wordIn(entry);
      if (size > typed.size() + slips || typed.size() > size + slips) continue;
      if (word >= seen.size() || seen[word]) continue;
      seen[word] = true;
      const std::uint32_t others = letterSets_[word] ^ letters;
      if (hasMoreThan(mostOthers(slips, typed.size(), size), others)) continue;
      found.push_back(word);
    }
  });
  return found;
}

std::vector<WordIndex::Entry> WordIndex::near(std::string_view typed) const {
  const std::size_t most = mostSlipsIn(typed);
  const SlipCount count(typed);
  std::vector<Entry> entries;
  for (const std::uint32_t index : candidates(typed, most)) {
    const std::string_view word = words_[index];
    const std::size_t slips = count.to(word);
    if (slips == 0 || slips > most) continue;
    entries.push_back({word, corrections::logFrequency(frequencies_[index]), slips});
  }
  return entries;
}

}  // namespace quorvane::corrections
