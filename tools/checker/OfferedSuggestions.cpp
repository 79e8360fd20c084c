#include "tools/checker/OfferedSuggestions.h"
#include "tools/corrections/Letters.h"

#include <algorithm>

namespace quorvane::checker {

namespace {

bool usable(const std::string& suggestion) {
  return !suggestion.empty() &&
         std::ranges::all_of(suggestion, [](char c) { return isLetter(c) || c == '\''; });
}

/// With the word's leading capital.
std::string inPlaceOf(const std::string& word, const std::string& suggestion) {
  return isUpper(word[0]) ? capitalised(suggestion) : suggestion;
}

}  // namespace

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
