// Corrections, beside the bare spell checker, and sound-alike words, beside a distance that is
// worked out inside the comparison.

#include <enchant.h>
#include <simdjson.h>

#include <algorithm>

#include "bench/Completion.h"
#include "bench/CompletionEngine.h"
#include "src/base/Text.h"

namespace quorvane::bench {
namespace {

/// Misspelt as people do, none of them the beginning of a word.
const Words kMisspelt{u"recieve",    u"definately", u"seperatly",  u"occured",  u"untill",
                      u"acommodate", u"wierdly",    u"neccessary", u"tommorow", u"begining"};

struct BareSpellChecker {
  EnchantBroker* broker = enchant_broker_init();
  EnchantDict* dictionary = nullptr;

  BareSpellChecker() {
    enchant_broker_set_ordering(broker, "en_US", "aspell,hunspell");
    dictionary = enchant_broker_request_dict(broker, "en_US");
  }
  ~BareSpellChecker() {
    enchant_broker_free_dict(broker, dictionary);
    enchant_broker_free(broker);
  }
};

void bareSpellChecker(benchmark::State& state) {
  static const BareSpellChecker checker;
  std::vector<std::string> words;
  for (const std::u16string& word : kMisspelt) words.push_back(toUtf8(word));
  for (auto step : state) {
    for (const std::string& word : words) {
      std::size_t count = 0;
      char** const list = enchant_dict_suggest(checker.dictionary, word.data(),
                                               static_cast<ssize_t>(word.size()), &count);
      benchmark::DoNotOptimize(list);
      if (list != nullptr) enchant_dict_free_string_list(checker.dictionary, list);
    }
  }
}

void fallback(benchmark::State& state) {
  ConversionEngine& completion = engine().get();
  for (auto step : state) {
    for (const std::u16string& word : kMisspelt) {
      benchmark::DoNotOptimize(completion.getSuggestionOfSpellChecker(word));
    }
  }
}

/// The sound-alike words of each misspelt one, as text and as the table has them.
struct SoundAlikes {
  std::vector<Words> words;
  std::vector<std::string> lists;

  SoundAlikes() {
    simdjson::dom::parser parser;
    const simdjson::dom::element groups = parser.load(kData / "phonex_encoded_words.json");
    for (const std::u16string& text : kMisspelt) {
      const std::string code = toUtf8(engine().get().phonexEncode(text));
      words.emplace_back();
      lists.emplace_back();
      for (const auto word : groups[code].get_array()) {
        words.back().push_back(wide(std::string_view(word)));
        TextList::append(lists.back(), std::string_view(word));
      }
    }
  }
};

const SoundAlikes& soundAlikes() {
  static const SoundAlikes all;
  return all;
}

std::size_t plainDistance(const std::u16string& a, const std::u16string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0]++;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t substituted = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, substituted});
    }
  }
  return row.back();
}

void distanceInComparator(benchmark::State& state) {
  for (auto step : state) {
    for (std::size_t i = 0; i < kMisspelt.size(); ++i) {
      Words words = soundAlikes().words[i];
      const auto distance = [&](const std::u16string& word) {
        return plainDistance(kMisspelt[i], word);
      };
      std::ranges::stable_sort(words, std::less(), distance);
      std::erase_if(words, [&](const std::u16string& word) { return distance(word) >= 4; });
      benchmark::DoNotOptimize(words);
    }
  }
}

void soundAlikePart(benchmark::State& state) {
  ConversionEngine& completion = engine().get();
  for (auto step : state) {
    for (std::size_t i = 0; i < kMisspelt.size(); ++i) {
      benchmark::DoNotOptimize(completion.sortByDamerauLevenshteinDistance(
          TextList(soundAlikes().lists[i]), kMisspelt[i]));
    }
  }
}

}  // namespace

void registerFallback() {
  add("bareSpellChecker", bareSpellChecker);
  add("fallback", fallback);
  add("distanceInComparator", distanceInComparator);
  add("soundAlikePart", soundAlikePart);
}

void printFallback(const Ratios& ratios) {
  ratios.print("fallback", "fallback", "bareSpellChecker", 1.05);
  ratios.print("sound-alikes", "soundAlikePart", "distanceInComparator", 0.025);
}

}  // namespace quorvane::bench
