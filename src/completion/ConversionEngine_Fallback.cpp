// What is offered for a text that no word begins with.

#include <array>

#include "src/base/Text.h"
#include "src/completion/ConversionEngine.h"
#include "src/completion/Levenshtein.h"

namespace quorvane {
namespace {

constexpr std::size_t kLongestWithoutPhonex = 3;
constexpr std::size_t kMostOfEachSource = 4;
constexpr std::size_t kDistanceLimit = 4;
constexpr std::string_view kLanguage = "en";
constexpr std::int64_t kNoDocument = 0;

bool isAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char byte) { return (byte & 0x80) == 0; });
}

}  // namespace

ConversionEngine::Words ConversionEngine::getSuggestionOfSpellChecker(const std::u16string& text) {
  Words guesses = instance_.platform().sharedSpellChecker.guessesForWordRange(
      {0, text.size()}, text, kLanguage, kNoDocument);
  if (text.size() <= kLongestWithoutPhonex) return guesses;
  const auto ranked = sortByDamerauLevenshteinDistance(soundAlikesOf(text), text);
  if (ranked.empty()) return guesses;
  guesses.resize(subarrayWithRang(guesses, kMostOfEachSource).size());
  for (const std::string_view word : subarrayWithRang(ranked, kMostOfEachSource)) {
    guesses.push_back(decoded(word));
  }
  return guesses;
}

TextList ConversionEngine::soundAlikesOf(const std::u16string& text) {
  const std::u16string code = phonexEncode(text);
  if (!hasUtf8Form(code)) return {};
  return data_.phonexEncoded.ask(
      [key = toUtf8(code)](const PhonexTable& table) { return table.words(key); });
}

std::u16string ConversionEngine::phonexEncode(const std::u16string& word) {
  return data_.phonexEncoder.callWithArguments(word);
}

std::vector<std::string_view> ConversionEngine::sortByDamerauLevenshteinDistance(
    TextList words, std::u16string_view inputText) {
  const Levenshtein input(inputText);
  std::array<std::vector<std::string_view>, kDistanceLimit> kept;
  words.forEach([&](std::string_view word) {
    const std::size_t distance = isAscii(word) ? input.mdc_levenshteinDistanceTo(word)
                                               : input.mdc_levenshteinDistanceTo(decoded(word));
    if (distance < kDistanceLimit) kept[distance].push_back(word);
  });
  std::vector<std::string_view> nearestFirst;
  for (const auto& group : kept)
    nearestFirst.insert(nearestFirst.end(), group.begin(), group.end());
  return nearestFirst;
}

}  // namespace quorvane
