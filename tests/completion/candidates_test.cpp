// The list of candidates is what enumerating the word list, sorting and cutting it would give.

#include <simdjson.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <random>
#include <unordered_map>

#include "src/base/Text.h"
#include "tests/completion/EngineTest.h"

namespace quorvane {
namespace {

struct Candidates : test::EngineTest {
  using Frequencies = std::unordered_map<std::u16string, std::int64_t>;

  /// Words in the order of the trie, sorted the long way.
  static Words ranked(const Words& words, const Frequencies& frequencies) {
    std::vector<std::pair<std::int64_t, const std::u16string*>> pairs;
    for (const std::u16string& word : words) {
      const auto known = frequencies.find(word);
      pairs.emplace_back(known == frequencies.end() ? 0 : known->second, &word);
    }
    std::ranges::stable_sort(pairs, std::greater(), [](const auto& pair) { return pair.first; });
    Words sorted;
    for (const auto& [frequency, word] : pairs) sorted.push_back(*word);
    return sorted;
  }
  /// The list for a text in lower case, of the words that begin so.
  static Words expected(Words words, const std::u16string& text) {
    if (words.size() > 50) words.resize(49);
    std::erase(words, text);
    words.insert(words.begin(), text);
    return words;
  }
};

std::u16string wide(std::string_view ascii) { return {ascii.begin(), ascii.end()}; }

TEST_F(Candidates, OfRandomListsAreThoseOfTheLongWay) {
  const auto seed = std::random_device{}();
  std::mt19937 random(seed);
  SCOPED_TRACE(seed);
  for (int round = 0; round < 40; ++round) {
    std::vector<std::string> words;
    std::string json;
    Frequencies frequencies;
    for (auto count = 1 + random() % 700; count > 0; --count) {
      std::string word;
      for (auto length = 1 + random() % 9; length > 0; --length) word += "ab"[random() % 2];
      const auto frequency = static_cast<int>(random() % 4) - 1;
      if (random() % 8 > 0) words.push_back(word);
      if (random() % 4 == 0) continue;
      json += (json.empty() ? "{\"" : ",\"") + word +
              "\":{\"frequency\":" + std::to_string(frequency) + "}";
      frequencies[wide(word)] = frequency;
    }
    const std::vector<std::string_view> list(words.begin(), words.end());
    host.bundle.setWordList(list);
    putWords(json.empty() ? "{}" : json + "}");
    ConversionEngine& engine = start();
    for (const auto* text : {u"a", u"b", u"ab", u"bab", u"aaa", u"bbaabbaab"}) {
      ASSERT_EQ(engine.getCandidates(text),
                expected(ranked(engine.wordsStartsWith(text), frequencies), text));
    }
  }
}

#ifdef NDEBUG
constexpr int kFourLetterStep = 1;
#else
constexpr int kFourLetterStep = 16;  // of the prefixes of four letters; a slow build takes a part
#endif

// Each prefix of up to four letters.
TEST_F(Candidates, OfTheRealDataAreThoseOfTheLongWay) {
  const std::filesystem::path data = QUORVANE_SOURCE_DIR "/build/data";
  if (!std::filesystem::exists(data)) GTEST_SKIP() << "scripts/setup makes the data";
  for (const char* file : {"google_227800_words.bin", "frequency_and_ipa.json"}) {
    host.bundle.put(file, simdjson::padded_string::load((data / file).string()).value());
  }
  Frequencies frequencies;
  simdjson::dom::parser parser;
  for (const auto member : parser.load(data / "frequency_and_ipa.json").get_object()) {
    frequencies[wide(member.key)] = std::int64_t(member.value["frequency"]);
  }
  ConversionEngine& engine = start();
  std::unordered_map<std::u16string, Words> wordsWith;
  for (const auto& word : ranked(engine.wordsStartsWith(u""), frequencies)) {
    for (std::size_t n = 1; n <= std::min<std::size_t>(4, word.size()); ++n) {
      const std::u16string prefix = word.substr(0, n);
      if (n == 4 && (prefix[1] + 3 * prefix[2] + 7 * prefix[3]) % kFourLetterStep != 0) continue;
      if (Words& words = wordsWith[prefix]; words.size() < 51) words.push_back(word);
    }
  }
  for (const auto& [prefix, words] : wordsWith) {
    ASSERT_EQ(engine.getCandidates(prefix), expected(words, prefix)) << toUtf8(prefix);
  }
}

TEST_F(Candidates, FrequenciesFarApartAreComparedByTheirWrappedDifference) {
  const std::vector<std::string_view> words{"qa", "qb", "qc"};
  host.bundle.setWordList(words);
  const Words listed = start().wordsStartsWith(u"q");
  struct Case {
    const char* json;
    Words sorted;
  };
  for (const auto& [json, sorted] : {
           Case{R"({"qa":{"frequency":2147483647},"qb":{"frequency":1}})", {u"qa", u"qb", u"qc"}},
           // 2^31 - 1 less -2 wraps to the negative, so that the least stands first.
           Case{R"({"qa":{"frequency":2147483647},"qb":{"frequency":-2},"qc":{"frequency":-2}})",
                {u"qb", u"qc", u"qa"}},
       }) {
    putWords(json);
    const Words list = start().getCandidates(u"q");
    EXPECT_EQ(Words(list.begin() + 1, list.end()), sorted) << json;
  }
}

TEST_F(Candidates, StandInTheirOrderWithTheUsersCapitals) {
  putWords(R"({"the":{"frequency":9},"there":{"frequency":5},"this":{"frequency":"7"},
               "that":{"frequency":2}})");
  putUserFile(R"({"th":"THe","zz":"zzap","":"never","Zz":"never"})");
  host.spellChecker.guesses[u"zz"] = {u"Zoo"};
  ConversionEngine& engine = start();
  const std::u16string dotted = u"\u0130";  // lowered to two units
  for (const auto& [typed, list] : std::map<std::u16string, Words>{
           {u"", {}},
           {u"th", {u"th", u"THe", u"the", u"this", u"there", u"that", u"their"}},
           {u"TH", {u"TH", u"THe", u"THis", u"THere", u"THat", u"THeir"}},
           {u"THE", {u"THE", u"THEre", u"THEir"}},
           {u"ZZ", {u"ZZ", u"ZZap", u"Zoo"}},
           {dotted, {dotted + u"\u0307"}},
           {std::u16string(u"thi\0x", 5), {std::u16string(u"thi\0x", 5), u"this"}},
       }) {
    EXPECT_EQ(engine.getCandidates(typed), list) << toUtf8(typed);
  }
  const std::u16string unpaired{u't', char16_t{0xD800}};
  EXPECT_THROW(engine.getCandidates(unpaired), std::invalid_argument);
  EXPECT_THROW(engine.wordsStartsWith(unpaired), std::invalid_argument);
  EXPECT_EQ(engine.getAnnotation(unpaired), u"");
}

}  // namespace
}  // namespace quorvane
