#include "tools/corrections/NewWordIndex.h"

#include <algorithm>

#include "src/completion/Snapshot.h"
#include "src/completion/TextList.h"
#include "tools/corrections/Alphabet.h"

namespace quorvane::corrections {

namespace {

/// A word that nobody was ever seen to write is what somebody meant too seldom to be looked for.
constexpr std::uint8_t kLeastFrequency = 1 + static_cast<std::uint8_t>(1.79F * kFrequencySteps);

/// Of phonetic symbols, stress marks passed over.
FirstSound firstSound(std::string_view symbols) {
  constexpr std::array<std::string_view, 2> kStress{"\u02C8", "\u02CC"};
  constexpr std::array<std::string_view, 14> kVowels{
      "a",      "e",      "i",      "o",      "u",      "\u00E6", "\u0251",
      "\u0254", "\u0259", "\u025B", "\u025C", "\u026A", "\u028A", "\u028C"};
  for (const std::string_view mark : kStress) {
    if (symbols.starts_with(mark)) symbols.remove_prefix(mark.size());
  }
  if (symbols.empty()) return FirstSound::Unknown;
  const bool vowel = std::ranges::any_of(
      kVowels, [symbols](std::string_view one) { return symbols.starts_with(one); });
  return vowel ? FirstSound::Vowel : FirstSound::Consonant;
}

}  // namespace

NewWordIndex::NewWordIndex(const FrequencyTable& words) {
  for (const std::uint32_t i : words.words.sorted()) {
    if (!isWord(words.words[i])) continue;
    words_.add(words.words[i]);
    frequencies_.push_back(packedFrequency(words.frequencies[i]));
    letterSets_.push_back(lettersIn(words.words[i]));
    const bool annotated = i < words.annotations.size();
    sounds_.push_back(annotated ? firstSound(TextList(words.annotations[i]).front())
                                : FirstSound::Unknown);
  }
  fillBuckets();
}

/// Counts first, so that each entry has its place at once. A word comes once to a bucket.
void NewWordIndex::fillBuckets() {
  buckets_.assign(kBucketCount + 1, 0);
  std::vector<std::size_t> buckets;
  const auto visitAll = [&](auto visit) {
    const std::size_t count = std::min(words_.size(), kMostIndexed);
    for (std::uint32_t word = 0; word < count; ++word) {
      if (frequencies_[word] < kLeastFrequency) continue;
      buckets.clear();
      visitRemains(words_[word], kMostSlips,
                   [&](std::string_view rest) { buckets.push_back(bucketOf(rest)); });
      std::ranges::sort(buckets);
      const auto end = std::unique(buckets.begin(), buckets.end());
      std::for_each(buckets.begin(), end, [&](std::size_t bucket) { visit(bucket, word); });
    }
  };
  visitAll([this](std::size_t bucket, std::uint32_t /*word*/) { ++buckets_[bucket]; });
  std::uint32_t end = 0;
  for (std::uint32_t& bucket : buckets_) bucket = end += bucket;
  entries_.resize(end);
  visitAll([this](std::size_t bucket, std::uint32_t word) {
    entries_[--buckets_[bucket]] = packedEntry(word, words_[word].size());
  });
}

std::vector<std::span<const std::uint8_t>> NewWordIndex::sections() const {
  return {asBytes(words_.bytes()), asBytes(words_.offsets()), asBytes(frequencies_),
          asBytes(buckets_),       asBytes(entries_),         asBytes(sounds_),
          asBytes(letterSets_)};
}

}  // namespace quorvane::corrections
