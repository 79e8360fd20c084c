#include "tools/word_data/WordNet.h"

#include <algorithm>
#include <optional>
#include <tuple>

#include "tools/word_data/PlainWord.h"

namespace quorvane::word_data {
namespace {

constexpr std::string_view Bar = " | ";
constexpr std::array<std::string_view, Parts.size()> PartNames{"noun", "verb", "adj", "adv"};

std::string fileName(std::string_view stem, Part part) {
  return std::string(stem) + std::string(PartNames[static_cast<std::size_t>(part)]);
}

// The line of `data` at a byte offset, which it repeats in its first field.
std::optional<std::string_view> lineAt(std::string_view data, std::string_view offsetDigits) {
  const long long offset = number(offsetDigits);
  if (offset < 0 || static_cast<std::size_t>(offset) >= data.size()) return {};
  const std::string_view rest = data.substr(static_cast<std::size_t>(offset));
  const std::string_view line = rest.substr(0, rest.find('\n'));
  if (!line.starts_with(offsetDigits) || line.find(Bar) == std::string_view::npos) return {};
  return line;
}

// ";u OFFSET n NUMBER" in a line points to the noun that says how the word is used.
bool isOffensive(std::string_view line, std::string_view nouns) {
  constexpr std::array<std::string_view, 3> Usages{"disparagement", "ethnic_slur", "obscenity"};
  line = line.substr(0, line.find(Bar));
  if (line.find(" ;u ") == std::string_view::npos) return false;
  const std::vector<std::string_view> columns = fields(line);
  for (std::size_t i = 0; i + 1 < columns.size(); ++i) {
    if (columns[i] != ";u") continue;
    const auto usage = lineAt(nouns, columns[i + 1]);
    const auto words = usage ? fields(*usage) : std::vector<std::string_view>();
    if (words.size() > 4 && std::ranges::find(Usages, words[4]) != Usages.end()) return true;
  }
  return false;
}

// The digit after "%" in a sense's key; 5 is an adjective too.
std::optional<Part> partOfKey(char digit) {
  switch (digit) {
    case '1':
      return Part::Noun;
    case '2':
      return Part::Verb;
    case '3':
    case '5':
      return Part::Adjective;
    case '4':
      return Part::Adverb;
    default:
      return {};
  }
}

Sense* findSense(std::vector<Sense>& senses, Part part, int senseNumber) {
  const auto found = std::ranges::find_if(senses, [&](const Sense& sense) {
    return sense.part == part && sense.number == senseNumber;
  });
  return found == senses.end() ? nullptr : &*found;
}

}  // namespace

WordNet::WordNet(const std::filesystem::path& folder) {
  for (const Part part : Parts) {
    readPart(part, folder);
    readExceptions(part, folder / (fileName("", part) + ".exc"));
  }
  readCounts(folder / "cntlist.rev");
  sortSenses();
}

void WordNet::readPart(Part part, const std::filesystem::path& folder) {
  auto& data = data_[static_cast<std::size_t>(part)];
  data = std::make_unique<TextFile>(folder / fileName("data.", part));
  const TextFile index(folder / fileName("index.", part));
  for (std::size_t line = 0; line < index.lines().size(); ++line)
    if (!index.lines()[line].starts_with(' ')) readIndexLine(part, index, line, data->text());
}

// "lemma part n ... offset1 ... offsetN"
void WordNet::readIndexLine(Part part, const TextFile& index, std::size_t line,
                            std::string_view data) {
  const std::vector<std::string_view> columns = fields(index.lines()[line]);
  if (columns.size() < 3) index.fail(line, "fewer than three columns");
  if (!isPlain(columns[0])) return;
  const long long count = number(columns[2]);
  if (count < 1 || static_cast<std::size_t>(count) > columns.size() - 3)
    index.fail(line, "the number of senses disagrees with the columns");
  std::vector<Sense>& senses = senses_[std::string(columns[0])];
  const std::size_t first = columns.size() - static_cast<std::size_t>(count);
  for (std::size_t i = first; i < columns.size(); ++i) {
    const auto entry = lineAt(data, columns[i]);
    if (!entry) index.fail(line, "no entry at " + std::string(columns[i]));
    senses.push_back({part, static_cast<int>(i - first) + 1, 0,
                      entry->substr(entry->find(Bar) + Bar.size()),
                      isOffensive(*entry, data_.front()->text())});
  }
}

void WordNet::readExceptions(Part part, const std::filesystem::path& path) {
  const TextFile file(path);
  for (std::size_t line = 0; line < file.lines().size(); ++line) {
    const std::vector<std::string_view> columns = fields(file.lines()[line]);
    if (columns.size() < 2) file.fail(line, "fewer than two columns");
    for (std::size_t i = 1; i < columns.size(); ++i)
      if (columns[i] != columns[0])
        irregular_[std::string(columns[0])].push_back({part, std::string(columns[i])});
  }
}

// "lemma%T:... number count"
void WordNet::readCounts(const std::filesystem::path& path) {
  const TextFile file(path);
  for (std::size_t line = 0; line < file.lines().size(); ++line) {
    const std::vector<std::string_view> columns = fields(file.lines()[line]);
    const std::size_t percent = columns.empty() ? 0 : columns[0].find('%');
    if (columns.size() != 3 || percent >= columns[0].size() - 1)
      file.fail(line, "not \"lemma%key number count\"");
    const auto part = partOfKey(columns[0][percent + 1]);
    const long long senseNumber = number(columns[1]);
    const long long count = number(columns[2]);
    if (!part || senseNumber < 1 || count < 0 || count > 1'000'000)
      file.fail(line, "not a part of speech, a sense number and a count");
    const auto found = senses_.find(std::string(columns[0].substr(0, percent)));
    if (found == senses_.end()) continue;
    if (Sense* sense = findSense(found->second, *part, static_cast<int>(senseNumber)))
      sense->count = static_cast<int>(count);
  }
}

void WordNet::sortSenses() {
  for (auto& [word, senses] : senses_)
    std::ranges::sort(senses, {}, [](const Sense& sense) {
      return std::tuple(-sense.count, sense.number, sense.part);
    });
}

const std::vector<Sense>& WordNet::senses(const std::string& word) const {
  static const std::vector<Sense> None;
  const auto found = senses_.find(word);
  return found == senses_.end() ? None : found->second;
}

const std::vector<BaseForm>& WordNet::irregularBases(const std::string& word) const {
  static const std::vector<BaseForm> None;
  const auto found = irregular_.find(word);
  return found == irregular_.end() ? None : found->second;
}

}  // namespace quorvane::word_data
