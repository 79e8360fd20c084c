#include "tools/word_data/Scowl.h"

#include <algorithm>
#include <array>
#include <vector>

#include "tools/word_data/PlainWord.h"
#include "tools/word_data/TextFile.h"

namespace quorvane::word_data {
namespace {

constexpr std::array<std::string_view, 14> Categories{"english",
                                                      "american",
                                                      "british",
                                                      "british_z",
                                                      "canadian",
                                                      "australian",
                                                      "variant_1",
                                                      "variant_2",
                                                      "british_variant_1",
                                                      "british_variant_2",
                                                      "canadian_variant_1",
                                                      "canadian_variant_2",
                                                      "australian_variant_1",
                                                      "australian_variant_2"};

struct Kind {
  std::string_view name;
  int Levels::*field;
  int highest;
};
constexpr std::array<Kind, 4> Kinds{{{"words", &Levels::word, 80},
                                     {"upper", &Levels::name, 80},
                                     {"proper-names", &Levels::name, 80},
                                     {"abbreviations", &Levels::abbreviation, 50}}};

constexpr std::string_view RomanNumerals = "special-roman-numerals.35";

void addList(const std::filesystem::path& path, int Levels::*kind, int level,
             Candidates& candidates) {
  const TextFile file(path);
  for (const std::string_view line : file.lines()) {
    const std::string word = folded(line);
    if (!isPlain(word)) continue;
    int& lowest = candidates[word].*kind;
    lowest = std::min(lowest, level);
  }
}

void dropRomanNumerals(const std::filesystem::path& path, Candidates& candidates) {
  const TextFile file(path);
  for (const std::string_view line : file.lines()) {
    const auto found = candidates.find(std::string(line));
    if (found != candidates.end() && found->second.word == Levels::Absent) candidates.erase(found);
  }
}

std::vector<std::filesystem::path> filesOf(const std::filesystem::path& folder) {
  std::error_code error;
  std::vector<std::filesystem::path> paths;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error))
    paths.push_back(entry.path());
  if (error) throw SourceError(folder.string() + ": " + error.message());
  std::ranges::sort(paths);
  return paths;
}

}  // namespace

int Levels::*kindOfList(std::string_view fileName, int& level) {
  const std::size_t dash = fileName.find('-');
  const std::size_t dot = fileName.rfind('.');
  if (dash == std::string_view::npos || dot == std::string_view::npos || dot < dash) return nullptr;
  if (std::ranges::find(Categories, fileName.substr(0, dash)) == Categories.end()) return nullptr;
  const auto kind =
      std::ranges::find(Kinds, fileName.substr(dash + 1, dot - dash - 1), &Kind::name);
  level = static_cast<int>(number(fileName.substr(dot + 1)));
  return kind != Kinds.end() && level > 0 && level <= kind->highest ? kind->field : nullptr;
}

Candidates readScowl(const std::filesystem::path& folder) {
  Candidates candidates;
  for (const auto& path : filesOf(folder)) {
    int level = 0;
    if (int Levels::*const kind = kindOfList(path.filename().string(), level))
      addList(path, kind, level, candidates);
  }
  if (candidates.empty()) throw SourceError(folder.string() + ": no word lists here");
  dropRomanNumerals(folder / RomanNumerals, candidates);
  return candidates;
}

}  // namespace quorvane::word_data
