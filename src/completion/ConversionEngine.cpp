#include "src/completion/ConversionEngine.h"

#include <algorithm>
#include <stdexcept>

#include "src/base/Text.h"
#include "src/completion/MergeSort.h"
#include "src/completion/WordList.h"

namespace quorvane {
namespace {

struct SharedEngineState {
  std::unique_ptr<ConversionEngine> engine;
};

constexpr std::size_t kListThreshold = 50;
constexpr std::size_t kCutSize = 49;

/// What a search of the word list begins with: the text up to its first NUL.
std::string queryOf(const std::u16string& text) {
  if (!hasUtf8Form(text)) throw std::invalid_argument("MARISA_NULL_ERROR: str == NULL");
  return toUtf8(std::u16string_view(text).substr(0, text.find(u'\0')));
}

void cut(std::vector<std::u16string>& list) {
  if (list.size() > kListThreshold) list.resize(kCutSize);
}

void putFirst(std::vector<std::u16string>& list, const std::u16string& text) {
  std::erase(list, text);
  list.insert(list.begin(), text);
}

/// Lays the typed text over each entry that begins with its lowered form. Throws std::out_of_range
/// where that form is shorter than the typed text, and the entry with it.
void restoreCase(std::vector<std::u16string>& list, const std::u16string& lowered,
                 const std::u16string& typedText) {
  if (typedText == lowered) return;
  for (std::u16string& entry : list) {
    if (!entry.starts_with(lowered)) continue;
    if (entry.size() < typedText.size()) throw std::out_of_range("substringFromIndex:");
    entry.replace(0, typedText.size(), typedText);
  }
}

/// Each text stays where it first occurs. The list is short.
void removeDuplicates(std::vector<std::u16string>& list) {
  auto end = list.begin();
  for (auto entry = list.begin(); entry != list.end(); ++entry) {
    if (std::find(list.begin(), end, *entry) != end) continue;
    if (end != entry) *end = std::move(*entry);
    ++end;
  }
  list.erase(end, list.end());
}

}  // namespace

ConversionEngine& ConversionEngine::sharedEngine(Instance& instance) {
  auto& shared = instance.state<SharedEngineState>().engine;
  if (shared == nullptr) shared = std::make_unique<ConversionEngine>(instance);
  return *shared;
}

ConversionEngine::Words ConversionEngine::getCandidates(const std::u16string& typedText) {
  const std::u16string lowered = lowercaseString(typedText);
  if (lowered.empty()) return {};
  Words list = wordsByFrequency(lowered);
  bool differ = !list.empty();  // as words of one list do
  if (list.empty()) list = onesToOffer(getSuggestionOfSpellChecker(lowered));
  const auto substitution = data_.substitutions.find(lowered);
  if (substitution != data_.substitutions.end()) {
    list.insert(list.begin(), substitution->second);
    differ = false;
  }
  cut(list);
  putFirst(list, lowered);
  restoreCase(list, lowered, typedText);
  if (!differ) removeDuplicates(list);
  return list;
}

/// Of words that differ in case alone the first, and none that is known and not to be offered, in
/// whatever form with an apostrophe.
ConversionEngine::Words ConversionEngine::onesToOffer(Words words) {
  Words seen;
  std::erase_if(words, [&](const std::u16string& word) {
    const std::u16string lowered = lowercaseString(word);
    const bool again = std::ranges::find(seen, lowered) != seen.end();
    seen.push_back(lowered);
    return again || frequencyOf(lowered.substr(0, lowered.find(u'\''))) < 0;
  });
  return words;
}

/// The first of sortWordsByFrequency(wordsStartsWith(prefix)), more than a list is cut from.
ConversionEngine::Words ConversionEngine::wordsByFrequency(const std::u16string& prefix) {
  static_assert(WordTable::kMost > kListThreshold);
  const std::string query = queryOf(prefix);
  auto first = data_.wordsWithFrequencyAndTranslation.ask(
      [&query](const WordTable& table) -> std::optional<Words> {
        if (!table.ranked()) return std::nullopt;
        return table.firstWithPrefix(query);
      });
  if (first) return *std::move(first);
  return sortWordsByFrequency(wordsStartsWith(prefix));
}

ConversionEngine::Words ConversionEngine::wordsStartsWith(const std::u16string& prefix) {
  Words words;
  visitWords(instance_.state<WordListState>(), queryOf(prefix),
             [&words](std::string_view word) { words.emplace_back(word.begin(), word.end()); });
  return words;
}

ConversionEngine::Words ConversionEngine::sortWordsByFrequency(const Words& words) {
  struct Ranked {
    std::uint32_t frequency = 0;
    std::size_t index = 0;
  };
  std::vector<Ranked> order;
  order.reserve(words.size());
  for (const std::u16string& word : words) {
    order.push_back({static_cast<std::uint32_t>(frequencyOf(word)), order.size()});
  }
  mergeSort(order, [](const Ranked& later, const Ranked& earlier) {
    return static_cast<std::int32_t>(later.frequency - earlier.frequency) > 0;
  });
  Words sorted;
  sorted.reserve(words.size());
  for (const Ranked& one : order) sorted.push_back(words[one.index]);
  return sorted;
}

std::int32_t ConversionEngine::frequencyOf(const std::u16string& word) {
  if (!hasUtf8Form(word)) return 0;
  return data_.wordsWithFrequencyAndTranslation.ask(
      [key = toUtf8(word)](const WordTable& table) { return table.frequency(key); });
}

std::u16string ConversionEngine::lowercaseString(const std::u16string& text) {
  return instance_.platform().characterSets.lowercaseString(text);
}

}  // namespace quorvane
