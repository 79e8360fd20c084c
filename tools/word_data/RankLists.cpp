#include "tools/word_data/RankLists.h"

#include <simdjson.h>

#include <string_view>

#include "tools/word_data/PlainWord.h"
#include "tools/word_data/TextFile.h"

namespace quorvane::word_data {
namespace {

using simdjson::dom::element;

// An entry that comes twice keeps its better rank.
void addRank(Ranks& ranks, std::string_view word, int rank) {
  const std::string key = folded(word);
  if (isPlain(key)) ranks.try_emplace(key, rank);
}

void addLines(Ranks& ranks, std::string_view rest) {
  for (int rank = 1; !rest.empty(); ++rank) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    addRank(ranks, rest.substr(0, end), rank);
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
}

// From the first quote after `start` to the one that closes it: in a script and in JSON a string is
// written alike.
std::string_view quotedString(const TextFile& file, std::string_view start) {
  const std::string_view text = file.text();
  const std::size_t at = text.find(start);
  if (at == std::string_view::npos) file.fail("no \"" + std::string(start) + "\" here");
  const std::size_t begin = at + start.size() - 1;
  std::size_t end = begin + 1;
  while (end < text.size() && text[end] != '"') end += text[end] == '\\' ? 2 : 1;
  return text.substr(begin, end + 1 - begin);
}

Ranks ifThere(const std::filesystem::path& path, Ranks (*read)(const std::filesystem::path&)) {
  return std::filesystem::exists(path) ? read(path) : Ranks{};
}

}  // namespace

Ranks readJsonRanks(const std::filesystem::path& path) {
  const TextFile file(path);
  simdjson::dom::parser parser;
  simdjson::dom::array words;
  if (parser.parse(file.text()).get(words)) file.fail("no JSON array");
  Ranks ranks;
  int rank = 0;
  for (const element entry : words) {
    std::string_view word;
    if (entry.get(word)) file.fail("entry " + std::to_string(rank) + " is no string");
    addRank(ranks, word, ++rank);
  }
  if (ranks.empty()) file.fail("no words here");
  return ranks;
}

Ranks readScriptRanks(const std::filesystem::path& path) {
  const TextFile file(path);
  simdjson::dom::parser parser;
  std::string_view words;
  const std::string quoted(quotedString(file, "module.exports = \""));
  if (parser.parse(quoted).get(words)) file.fail("a string that JSON can't read");
  Ranks ranks;
  addLines(ranks, words);
  if (ranks.empty()) file.fail("no words here");
  return ranks;
}

RankLists readRankLists(const std::filesystem::path& packages) {
  return {ifThere(packages / "@zxcvbn-ts/language-en/src/commonWords.json", readJsonRanks),
          ifThere(packages / "norvig-frequencies/lib/data.js", readScriptRanks)};
}

}  // namespace quorvane::word_data
