#include "tools/checker/documents/GrammarRules.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "tools/corrections/Letters.h"

namespace quorvane::checker {

namespace {

using Bytes = std::span<const std::uint8_t>;

/// Of more than two letters, as they stand in the middle of sentences.
constexpr auto kAbbreviations = std::to_array<std::string_view>(
    {"approx", "cap",  "capt", "cent", "dept", "dist", "esp", "est", "etc",  "ext", "fig",
     "figs",   "gen",  "incl", "inc",  "jan",  "feb",  "mar", "apr", "jun",  "jul", "aug",
     "sep",    "sept", "oct",  "nov",  "dec",  "ltd",  "max", "min", "misc", "mrs", "mins",
     "obs",    "orig", "pres", "prof", "pub",  "resp", "rev", "sec", "seq",  "ser", "sgt",
     "tel",    "temp", "univ", "viz",  "vol",  "vols", "yrs"});

/// That end sentences. Any other of two letters may be an abbreviation or an initial.
constexpr auto kShortWords = std::to_array<std::string_view>(
    {"do", "go", "he", "in", "is", "it", "me", "on", "so", "to", "up", "us", "we"});

bool isBlank(std::uint8_t byte) { return isOneOf(" \t\r", byte); }

std::string lastWord(Bytes text) {
  std::string word;
  for (; !text.empty() && isLetter(text.back()); text = text.first(text.size() - 1)) {
    word.insert(word.begin(), lower(static_cast<char>(text.back())));
  }
  return word;
}

bool isOneOfThem(std::span<const std::string_view> words, std::string_view word) {
  return std::ranges::find(words, word) != words.end();
}

/// A dot before it makes it "e.g." or a name of a file.
bool endsWithWholeWord(Bytes text) {
  const std::string word = lastWord(text);
  if (word.size() < 3 ? !isOneOfThem(kShortWords, word) : isOneOfThem(kAbbreviations, word)) {
    return false;
  }
  return text.size() == word.size() || isBlank(text[text.size() - word.size() - 1]);
}

}  // namespace

bool surelyOpensSentence(Bytes before) {
  const std::size_t size = before.size();
  while (!before.empty() && isBlank(before.back())) before = before.first(before.size() - 1);
  if (before.empty() || before.size() == size || !isOneOf(".?!", before.back())) return false;
  return endsWithWholeWord(before.first(before.size() - 1));
}

std::optional<std::size_t> blanksBeforeMark(Bytes text, std::size_t mark) {
  const bool ends = mark + 1 == text.size() || isBlank(text[mark + 1]);
  if (!ends || !isOneOf(",;.?!", text[mark])) return std::nullopt;
  std::size_t start = mark;
  while (start > 0 && text[start - 1] == ' ') --start;
  if (start == mark || start == 0 || !isLetter(text[start - 1])) return std::nullopt;
  return start;
}

}  // namespace quorvane::checker
