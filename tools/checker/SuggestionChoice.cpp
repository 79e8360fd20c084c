#include "tools/checker/SuggestionChoice.h"

#include <algorithm>
#include <string_view>

namespace quorvane::checker {

namespace {

// The price of an edit. One never costs ten and two always do, so that prices order the suggestions
// and tell one edit from two.
constexpr int kSlip = 7;
constexpr int kSwap = 7;
constexpr int kEdit = 8;
constexpr int kEditOfFirstLetter = 9;  // seldom mistyped
constexpr int kOneEdit = 9;
constexpr int kTwoEdits = 2 * kEdit;  // and so with the first letter as it is

bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }
bool isLetter(char c) { return isUpper(c) || (c >= 'a' && c <= 'z'); }
char lower(char c) { return isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c; }
char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

std::string capitalised(std::string word) {
  if (!word.empty()) word[0] = upper(word[0]);
  return word;
}

int insertionPrice(std::string_view text, std::size_t at) {
  if (text[at] == '\'') return kSlip;
  return at == 0 ? kEditOfFirstLetter : kEdit;
}

int substitutionPrice(std::string_view from, std::size_t i, std::string_view to, std::size_t j) {
  if (from[i] == to[j]) return 0;
  if (i == 0 && j == 0) return lower(from[0]) == lower(to[0]) ? kSlip : kEditOfFirstLetter;
  return kEdit;
}

bool swapped(std::string_view from, std::size_t i, std::string_view to, std::size_t j) {
  return i > 0 && j > 0 && from[i] == to[j - 1] && from[i - 1] == to[j] && from[i] != from[i - 1];
}

/// Damerau-Levenshtein distance with prices, no stretch edited twice.
int price(std::string_view from, std::string_view to) {
  std::vector<std::vector<int>> cost(from.size() + 1, std::vector<int>(to.size() + 1));
  for (std::size_t i = 0; i <= from.size(); ++i) {
    for (std::size_t j = 0; j <= to.size(); ++j) {
      if (i == 0 && j == 0) continue;
      int best = 1000000;
      if (i > 0) best = std::min(best, cost[i - 1][j] + insertionPrice(from, i - 1));
      if (j > 0) best = std::min(best, cost[i][j - 1] + insertionPrice(to, j - 1));
      if (i > 0 && j > 0) {
        best = std::min(best, cost[i - 1][j - 1] + substitutionPrice(from, i - 1, to, j - 1));
      }
      if (i > 1 && j > 1 && swapped(from, i - 1, to, j - 1)) {
        best = std::min(best, cost[i - 2][j - 2] + kSwap);
      }
      cost[i][j] = best;
    }
  }
  return cost[from.size()][to.size()];
}

bool usable(const std::string& suggestion) {
  return !suggestion.empty() &&
         std::ranges::all_of(suggestion, [](char c) { return isLetter(c) || c == '\''; });
}

/// With the word's leading capital.
std::string inPlaceOf(const std::string& word, const std::string& suggestion) {
  return isUpper(word[0]) ? capitalised(suggestion) : suggestion;
}

int limit(const std::string& word, bool midSentence) {
  if (word.size() < 2) return 0;
  const bool capital = isUpper(word[0]);
  if (word.size() <= 3 || (capital && midSentence)) return kSlip;
  return word.size() <= 5 || capital ? kOneEdit : kTwoEdits;
}

/// An abbreviation in small letters: changing all of it is no mend.
bool isAbbreviation(const std::string& suggestion, const std::string& word) {
  return suggestion.size() == word.size() && suggestion.size() > 1 &&
         std::ranges::equal(suggestion, word, {}, lower, lower) &&
         std::ranges::any_of(suggestion.begin() + 1, suggestion.end(), isUpper);
}

}  // namespace

std::optional<std::string> chooseSuggestion(const std::string& word, bool midSentence,
                                            const std::vector<std::string>& suggestions) {
  std::optional<std::string> best;
  int bestPrice = limit(word, midSentence) + 1;
  for (const std::string& suggestion : suggestions) {
    if (isAbbreviation(suggestion, word)) return std::nullopt;
    if (!usable(suggestion)) continue;
    std::string candidate = inPlaceOf(word, suggestion);
    const int candidatePrice = candidate == word ? bestPrice : price(word, candidate);
    if (candidatePrice >= bestPrice) continue;
    bestPrice = candidatePrice;
    best = std::move(candidate);
  }
  return best;
}

std::vector<std::string> offeredSuggestions(const std::string& word, std::size_t most,
                                            const std::vector<std::string>& suggestions) {
  std::vector<std::string> offered;
  for (const std::string& suggestion : suggestions) {
    if (offered.size() == most) break;
    if (!usable(suggestion)) continue;
    std::string candidate = inPlaceOf(word, suggestion);
    const bool known = candidate == word || std::ranges::count(offered, candidate) > 0;
    if (!known) offered.push_back(std::move(candidate));
  }
  return offered;
}

}  // namespace quorvane::checker
