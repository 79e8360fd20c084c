// Lists of candidates, beside enumerating the trie and beside looking up in a hash map.

#include <marisa.h>
#include <simdjson.h>

#include <algorithm>
#include <unordered_map>

#include "bench/Completion.h"
#include "bench/CompletionEngine.h"

namespace quorvane::bench {
namespace {

using Prefixes = std::vector<std::string>;

constexpr std::size_t kFewWords = 100;

/// The word list and the frequencies as one would hold them at first.
struct PlainData {
  marisa::Trie trie;
  std::unordered_map<std::string, std::int32_t> frequencies;
  Prefixes letters, s{"s"}, few;

  PlainData() {
    trie.load((kData / "google_227800_words.bin").c_str());
    simdjson::dom::parser parser;
    for (const auto word : parser.load(kData / "frequency_and_ipa.json").get_object()) {
      const auto frequency = static_cast<std::int32_t>(std::int64_t(word.value["frequency"]));
      frequencies.emplace(word.key, frequency);
    }
    for (char letter = 'a'; letter <= 'z'; ++letter) letters.emplace_back(1, letter);
    std::size_t number = 0;
    visit("", [&](const std::string& word) {
      if (++number % 97 == 0) addFew(word);
    });
  }

  template <class Visit>
  void visit(const std::string& prefix, Visit visit) const {
    marisa::Agent agent;
    agent.set_query(prefix.c_str());
    while (trie.predictive_search(agent)) {
      visit(std::string(agent.key().ptr(), agent.key().length()));
    }
  }
  std::size_t count(const std::string& prefix) const {
    marisa::Agent agent;
    agent.set_query(prefix.c_str());
    std::size_t words = 0;
    while (trie.predictive_search(agent)) ++words;
    return words;
  }
  /// All that is typed on the way to a word once only few words are left.
  void addFew(const std::string& word) {
    for (std::size_t size = 1; size <= word.size(); ++size) {
      if (count(word.substr(0, size)) < kFewWords) few.push_back(word.substr(0, size));
    }
  }
};

const PlainData& plain() {
  static const PlainData data;
  return data;
}

void enumerateTrie(benchmark::State& state, const Prefixes& prefixes) {
  for (auto step : state) {
    for (const std::string& prefix : prefixes) benchmark::DoNotOptimize(plain().count(prefix));
  }
}

void candidates(benchmark::State& state, const Prefixes& prefixes) {
  Words typed;
  for (const std::string& prefix : prefixes) typed.push_back(wide(prefix));
  ConversionEngine& completion = engine().get();
  for (auto step : state) {
    for (const std::u16string& text : typed) {
      benchmark::DoNotOptimize(completion.getCandidates(text));
    }
  }
}

/// Frequencies looked up inside the comparison.
void hashMapLists(benchmark::State& state, const Prefixes& prefixes) {
  const auto& frequencies = plain().frequencies;
  for (auto step : state) {
    for (const std::string& prefix : prefixes) {
      std::vector<std::string> words;
      plain().visit(prefix, [&words](const std::string& word) { words.push_back(word); });
      std::ranges::stable_sort(words, [&](const std::string& a, const std::string& b) {
        return frequencies.at(a) > frequencies.at(b);
      });
      words.resize(std::min<std::size_t>(words.size(), 49));
      benchmark::DoNotOptimize(words);
    }
  }
}

}  // namespace

void registerLists() {
  add("enumerateLetters", enumerateTrie, plain().letters);
  add("candidatesOfLetters", candidates, plain().letters);
  add("hashMapOfLetters", hashMapLists, plain().letters);
  add("enumerateS", enumerateTrie, plain().s);
  add("candidatesOfS", candidates, plain().s);
  add("enumerateFew", enumerateTrie, plain().few);
  add("candidatesOfFew", candidates, plain().few);
}

void printLists(const Ratios& ratios) {
  ratios.print("candidates-of-26-letters", "candidatesOfLetters", "enumerateLetters", 0.03);
  ratios.print("candidates-of-26-letters-to-hash-map", "candidatesOfLetters", "hashMapOfLetters",
               0.001);
  ratios.print("candidates-of-s", "candidatesOfS", "enumerateS", 0.02);
  ratios.print("candidates-of-few-words", "candidatesOfFew", "enumerateFew", 0.7);
}

}  // namespace quorvane::bench
