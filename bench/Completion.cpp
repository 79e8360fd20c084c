#include "bench/Completion.h"

#include <enchant.h>
#include <malloc.h>
#include <marisa.h>
#include <simdjson.h>

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <unordered_map>

#include "bench/Peer.h"
#include "hosts/desktop/DesktopHost.h"
#include "hosts/field/EventQueue.h"
#include "src/base/Text.h"
#include "src/completion/ConversionEngine.h"

namespace quorvane::bench {
namespace {

using Words = std::vector<std::u16string>;
using Prefixes = std::vector<std::string>;

const std::filesystem::path kData = QUORVANE_SOURCE_DIR "/build/data";
constexpr std::size_t kFewWords = 100;
constexpr int kRepetitions = 15;

/// Misspelt as people do, none of them the beginning of a word.
const Words kMisspelt{u"recieve",    u"definately", u"seperatly",  u"occured",  u"untill",
                      u"acommodate", u"wierdly",    u"neccessary", u"tommorow", u"begining"};

std::u16string wide(std::string_view ascii) { return {ascii.begin(), ascii.end()}; }

/// The desktop host, and an engine that can be started again and again.
class Engine {
 public:
  Engine() { host_.log().enabled = false; }

  ConversionEngine& restart() {
    process_.emplace(host_.platform());
    return ConversionEngine::sharedEngine(*process_);
  }
  ConversionEngine& get() {
    return process_ ? ConversionEngine::sharedEngine(*process_) : restart();
  }
  Platform platform() { return host_.platform(); }
  void removeSnapshots() {
    std::filesystem::remove_all(host_.platform().fileManager.cachesDirectory());
  }

 private:
  field::EventQueue queue_;
  desktop::DesktopHost host_{desktop::DesktopConfiguration::fromEnvironment(), queue_};
  std::optional<Process> process_;
};

Engine& engine() {
  static Engine instance;
  return instance;
}

// ---- lists ----

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

// ---- loading ----

std::size_t lengths(simdjson::ondemand::value value) {
  using Type = simdjson::ondemand::json_type;
  std::size_t total = 0;
  switch (value.type()) {
    case Type::object:
      for (auto field : value.get_object()) {
        total += std::string_view(field.unescaped_key()).size() + lengths(field.value());
      }
      return total;
    case Type::array:
      for (auto element : value.get_array()) total += lengths(element.value());
      return total;
    case Type::string:
      return std::string_view(value.get_string()).size();
    default:
      return static_cast<std::size_t>(value.get_int64());
  }
}

/// A file read, and each of its texts and numbers touched once.
std::size_t walk(const std::filesystem::path& file) {
  const simdjson::padded_string json = simdjson::padded_string::load(file.string());
  simdjson::ondemand::parser parser;
  simdjson::ondemand::document document = parser.iterate(json);
  std::size_t total = 0;
  for (auto field : document.get_object()) {
    total += std::string_view(field.unescaped_key()).size() + lengths(field.value());
  }
  return total;
}

/// What `body` gives in a process of its own.
double inOwnProcess(const std::function<double()>& body) {
  int ends[2];
  if (::pipe(ends) != 0) std::abort();
  const Child child([&] {
    const double result = body();
    if (::write(ends[1], &result, sizeof(result)) < 0) std::abort();
  });
  double result = 0;
  if (::read(ends[0], &result, sizeof(result)) != sizeof(result)) std::abort();
  ::close(ends[0]);
  ::close(ends[1]);
  return result;
}

/// Each start finds the memory of a new process: what was used before would be cheaper.
void forgetMemory(benchmark::State& state) {
  state.PauseTiming();
  malloc_trim(0);
  state.ResumeTiming();
}

void bareWalk(benchmark::State& state) {
  for (auto step : state) {
    forgetMemory(state);
    benchmark::DoNotOptimize(walk(kData / "frequency_and_ipa.json"));
    benchmark::DoNotOptimize(walk(kData / "phonex_encoded_words.json"));
  }
}

void jsonToReady(benchmark::State& state) {
  for (auto step : state) {
    state.PauseTiming();
    engine().removeSnapshots();
    state.ResumeTiming();
    forgetMemory(state);
    engine().restart();
  }
}

void firstCandidates() { benchmark::DoNotOptimize(engine().restart().getCandidates(u"th")); }

void snapshotToFirstCandidates(benchmark::State& state) {
  engine().restart();
  for (auto step : state) {
    forgetMemory(state);
    firstCandidates();
  }
}

/// How much memory of its own a start takes, in bytes.
double privateMemoryOfStart() {
  const auto own = [] {
    std::ifstream rollup("/proc/self/smaps_rollup");
    double kilobytes = 0;
    for (std::string name; rollup >> name;) {
      if (name == "Anonymous:") rollup >> kilobytes;
    }
    return kilobytes * 1024;
  };
  return inOwnProcess([&own] {
    const double before = own();
    firstCandidates();
    return own() - before;
  });
}

// ---- fallback ----

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

template <class Function, class... Arguments>
void add(const char* name, Function function, const Arguments&... arguments) {
  benchmark::RegisterBenchmark(name, function, arguments...)
      ->Repetitions(kRepetitions)
      ->MinTime(0.1);
}

double memoryFromJson = 0;  // in bytes, measured before this process has filled its own
double memoryFromSnapshot = 0;

}  // namespace

bool registerCompletion() {
  if (!std::filesystem::exists(kData)) return false;
  engine().removeSnapshots();
  memoryFromJson = privateMemoryOfStart();
  memoryFromSnapshot = privateMemoryOfStart();
  add("enumerateLetters", enumerateTrie, plain().letters);
  add("candidatesOfLetters", candidates, plain().letters);
  add("hashMapOfLetters", hashMapLists, plain().letters);
  add("enumerateS", enumerateTrie, plain().s);
  add("candidatesOfS", candidates, plain().s);
  add("enumerateFew", enumerateTrie, plain().few);
  add("candidatesOfFew", candidates, plain().few);
  add("bareWalk", bareWalk);
  add("jsonToReady", jsonToReady);
  add("snapshotToFirstCandidates", snapshotToFirstCandidates);
  add("bareSpellChecker", bareSpellChecker);
  add("fallback", fallback);
  add("distanceInComparator", distanceInComparator);
  add("soundAlikePart", soundAlikePart);
  return true;
}

void printCompletion(const Ratios& ratios) {
  if (!std::filesystem::exists(kData)) return;
  ratios.print("candidates-of-26-letters", "candidatesOfLetters", "enumerateLetters", 0.03);
  ratios.print("candidates-of-26-letters-to-hash-map", "candidatesOfLetters", "hashMapOfLetters",
               0.001);
  ratios.print("candidates-of-s", "candidatesOfS", "enumerateS", 0.02);
  ratios.print("candidates-of-few-words", "candidatesOfFew", "enumerateFew", 0.7);
  ratios.print("json-to-ready", "jsonToReady", "bareWalk", 2.5);
  ratios.print("snapshot-to-first-candidates", "snapshotToFirstCandidates", "jsonToReady", 0.002);
  const auto json =
      static_cast<double>(std::filesystem::file_size(kData / "frequency_and_ipa.json"));
  Ratios::printValue("private-memory-from-json", memoryFromJson / json, 0.9);
  Ratios::printValue("private-memory-from-snapshot", memoryFromSnapshot / json, 0.9);
  ratios.print("fallback", "fallback", "bareSpellChecker", 1.05);
  ratios.print("sound-alikes", "soundAlikePart", "distanceInComparator", 0.025);
}

}  // namespace quorvane::bench
