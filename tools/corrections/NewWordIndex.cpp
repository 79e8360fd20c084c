#include "tools/corrections/NewWordIndex.h"

#include "src/completion/Snapshot.h"
#include "tools/corrections/Alphabet.h"

namespace quorvane::corrections {

namespace {

/// A word that nobody was ever seen to write is what somebody meant too seldom to be looked for.
constexpr std::uint8_t kLeastFrequency = 1 + static_cast<std::uint8_t>(1.79F * kFrequencySteps);

}  // namespace

NewWordIndex::NewWordIndex(const FrequencyTable& words) {
  for (const std::uint32_t i : words.words.sorted()) {
    if (!isWord(words.words[i])) continue;
    words_.add(words.words[i]);
    frequencies_.push_back(packedFrequency(words.frequencies[i]));
  }
  fillBuckets();
}

/// Counts first, so that each entry has its place at once.
void NewWordIndex::fillBuckets() {
  buckets_.assign(kBucketCount + 1, 0);
  const auto visitAll = [this](auto visit) {
    for (std::uint32_t word = 0; word < words_.size(); ++word) {
      if (frequencies_[word] < kLeastFrequency) continue;
      visitRemains(words_[word], kMostSlips,
                   [&](std::string_view rest) { visit(bucketOf(rest), word); });
    }
  };
  visitAll([this](std::size_t bucket, std::uint32_t /*word*/) { ++buckets_[bucket]; });
  std::uint32_t end = 0;
  for (std::uint32_t& bucket : buckets_) bucket = end += bucket;
  entries_.resize(end);
  visitAll([this](std::size_t bucket, std::uint32_t word) { entries_[--buckets_[bucket]] = word; });
}

std::vector<std::span<const std::uint8_t>> NewWordIndex::sections() const {
  return {asBytes(words_.bytes()), asBytes(words_.offsets()), asBytes(frequencies_),
          asBytes(buckets_), asBytes(entries_)};
}

}  // namespace quorvane::corrections
