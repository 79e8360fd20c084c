#include "tools/word_data/Tables.h"

#include <algorithm>
#include <functional>
#include <string_view>

#include "tools/word_data/PlainWord.h"
#include "tools/word_data/TextFile.h"

namespace quorvane::word_data {
namespace {

using Columns = std::vector<std::string>;

Columns splitAtTabs(std::string_view line) {
  Columns parts;
  while (true) {
    const std::size_t end = std::min(line.find('\t'), line.size());
    parts.emplace_back(line.substr(0, end));
    if (end == line.size()) return parts;
    line.remove_prefix(end + 1);
  }
}

// Calls `take` with the word of each entry and the parts after it, of which there must be `least`
// to `most`.
void readTable(const std::filesystem::path& path, std::size_t least, std::size_t most,
               const std::function<void(std::string, Columns)>& take) {
  const TextFile file(path);
  for (std::size_t line = 0; line < file.lines().size(); ++line) {
    if (file.lines()[line].empty() || file.lines()[line].starts_with('#')) continue;
    Columns parts = splitAtTabs(file.lines()[line]);
    std::string word = std::move(parts.front());
    parts.erase(parts.begin());
    const std::string_view letters = std::string_view(word).substr(0, word.find('*'));
    if (!isPlain(letters)) file.fail(line, "begins with no word of a to z");
    if (parts.size() < least || parts.size() > most) file.fail(line, "wrong number of parts");
    take(std::move(word), std::move(parts));
  }
}

void readSet(const std::filesystem::path& path, Tables::WordSet& words) {
  readTable(path, 0, 0, [&](std::string word, const Columns&) { words.insert(std::move(word)); });
}

void addOffensive(Tables& tables, const std::string& word) {
  if (word.ends_with('*'))
    tables.offensiveStems.insert(word.substr(0, word.size() - 1));
  else
    tables.offensiveWords.insert(word);
}

}  // namespace

bool Tables::isOffensive(const std::string& word) const {
  return offensiveWords.contains(word) ||
         std::ranges::any_of(offensiveStems,
                             [&](const std::string& stem) { return word.starts_with(stem); });
}

Tables readTables(const std::filesystem::path& folder) {
  constexpr std::size_t Many = 3;
  Tables tables;
  readTable(folder / "function_words.txt", 0, Many, [&](std::string word, Columns glosses) {
    tables.functionWords[std::move(word)] = std::move(glosses);
  });
  readTable(folder / "pronunciations.txt", 1, 1, [&](std::string word, Columns ipa) {
    tables.pronunciations[std::move(word)] = std::move(ipa.front());
  });
  readTable(folder / "offensive_words.txt", 0, 0,
            [&](const std::string& word, const Columns&) { addOffensive(tables, word); });
  readSet(folder / "inoffensive_words.txt", tables.inoffensive);
  readSet(folder / "admitted_words.txt", tables.admitted);
  readSet(folder / "split_contractions.txt", tables.splitContractions);
  readSet(folder / "vowelless_words.txt", tables.vowelless);
  return tables;
}

}  // namespace quorvane::word_data
