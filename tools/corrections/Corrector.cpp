#include "tools/corrections/Corrector.h"

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

void addTable(FrequencyTable& words, std::string_view table) {
  std::istringstream lines{std::string(table)};
  for (std::string line; std::getline(lines, line);) {
    const std::size_t space = line.find(' ');
    if (line.starts_with('#') || space == std::string::npos) continue;
    words.words.add(line.substr(0, space));
    words.frequencies.push_back(intValue(std::string_view(line).substr(space)));
  }
}

Made<NewWordIndex> makeIndex(Platform& platform, const std::string& json) {
  FrequencyTable words;
  FrequencyTableReader reader(words);
  const auto error = platform.jsonSerialization.JSONObjectWithStream(json, reader);
  if (error) words = {};
  const bool sound = !error && words.words.size() >= kFewestWords;
  addTable(words, kTechnicalWordsTable);
  addTable(words, kContractionsTable);
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

}  // namespace quorvane::corrections
