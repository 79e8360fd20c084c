#include "tools/corrections/Corrector.h"

#include <map>
#include <sstream>
#include <stdexcept>

#include "src/base/Checksum.h"
#include "src/completion/SnapshotFile.h"
#include "tools/corrections/NewWordIndex.h"
#include "tools/corrections/Tables.h"

namespace quorvane::corrections {

namespace {

/// Fewer aren't the word data.
constexpr std::size_t kFewestWords = 10'000;

EditWeights ownWeights() {
  auto weights = parseEditWeights(kEditWeightsTable);
  if (!weights) throw std::logic_error("data/corrections/edit_weights.txt is malformed");
  return *weights;
}

using Frequencies = std::map<std::string, std::int32_t, std::less<>>;

void addTable(Frequencies& frequencies, std::string_view table) {
  std::istringstream lines{std::string(table)};
  for (std::string line; std::getline(lines, line);) {
    const std::size_t space = line.find(' ');
    if (line.starts_with('#') || space == std::string::npos) continue;
    frequencies[line.substr(0, space)] = intValue(std::string_view(line).substr(space));
  }
}

/// What the word data says of a word besides its frequency stays.
void addOwnWords(FrequencyTable& words) {
  Frequencies own;
  addTable(own, kTechnicalWordsTable);
  addTable(own, kContractionsTable);
  for (std::uint32_t i = 0; i < words.words.size(); ++i) {
    const auto found = own.find(words.words[i]);
    if (found == own.end()) continue;
    words.frequencies[i] = found->second;
    own.erase(found);
  }
  for (const auto& [word, frequency] : own) {
    words.words.add(word);
    words.frequencies.push_back(frequency);
  }
}

Made<NewWordIndex> makeIndex(Platform& platform, const std::string& json) {
  FrequencyTable words;
  FrequencyTableReader reader(words);
  const auto error = platform.jsonSerialization.JSONObjectWithStream(json, reader);
  if (error) words = {};
  const bool sound = !error && words.words.size() >= kFewestWords;
  addOwnWords(words);
  return {NewWordIndex(words), sound};
}

std::string sumOf(std::string_view table) { return std::to_string(checksum(asBytes(table))); }

}  // namespace

Corrector::Corrector(Cached<WordIndex> index)
    : index_(std::move(index)), weights_(ownWeights()), cost_(weights_, {}) {}

std::unique_ptr<Corrector> Corrector::open(Platform& platform) {
  const auto json = platform.bundle.pathForResource("frequency_and_ipa", "json");
  if (!json) return nullptr;
  FileManager& files = platform.fileManager;
  const std::string key =
      stateOfFile(files, json) + sumOf(kTechnicalWordsTable) + ' ' + sumOf(kContractionsTable);
  auto index = throughSnapshot<WordIndex>(
      files, "corrections", key, [&platform, path = *json] { return makeIndex(platform, path); });
  if (index.ask([](const WordIndex& words) { return words.size(); }) < kFewestWords) return nullptr;
  return std::unique_ptr<Corrector>(new Corrector(std::move(index)));
}

bool Corrector::indexIsKept(Platform& platform) {
  FileManager& files = platform.fileManager;
  return files.dataWithContentsOfMappedFile(files.cachesDirectory() + "/corrections.snapshot") !=
         nullptr;
}

void Corrector::setNeighbours(const KeyNeighbours& neighbours) {
  cost_ = EditCost(weights_, neighbours);
}

Judgement Corrector::judge(std::string_view word, Writing writing, const Accepts& accepts) {
  return index_.ask(
      [&](const WordIndex& index) { return Decision(index, cost_).judge(word, writing, accepts); });
}

float Corrector::score(std::string_view candidate, std::string_view typed) {
  return index_.ask(
      [&](const WordIndex& index) { return Decision(index, cost_).score(candidate, typed); });
}

std::optional<bool> Corrector::beginsWithVowel(std::string_view word) {
  return index_.ask([word](const WordIndex& index) { return index.beginsWithVowel(word); });
}

}  // namespace quorvane::corrections
