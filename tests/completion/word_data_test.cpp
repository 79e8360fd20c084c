// The files of word data: their shapes, what is wrong with them, and the snapshots made of them.

#include <marisa.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <stdexcept>

#include "src/completion/WordList.h"
#include "tests/completion/EngineTest.h"

namespace quorvane {
namespace {

constexpr const char* kWordsSnapshot = "/caches/frequency_and_ipa.snapshot";
constexpr const char* kCodesSnapshot = "/caches/phonex_encoded_words.snapshot";

struct WordData : test::EngineTest {
  std::string snapshot(const char* path) {
    const auto data = host.files.dataWithContentsOfFile(path);
    return data ? std::string(data->bytes().begin(), data->bytes().end()) : std::string();
  }
};

TEST_F(WordData, AFrequencyIsANumberOrDigitsAndAllElseIsNone) {
  struct Case {
    const char* value;
    std::int32_t frequency;
  };
  for (const auto& [value, frequency] : {Case{"5", 5},
                                         {"-5", -5},
                                         {"4294967301", 5},
                                         {"2147483648", INT32_MIN},
                                         {"-5.9", -5},
                                         {"1e300", INT32_MAX},
                                         {R"(" \t+5x")", 5},
                                         {R"("99999999999999999999")", INT32_MAX},
                                         {R"("")", 0},
                                         {"true", 1},
                                         {"null", 0},
                                         {R"([5,"5"])", 0},
                                         {R"(5,"frequency":null)", 0},
                                         {R"(7,"frequency":5,"frequencies":9)", 5}}) {
    putWords(R"({"word":{"frequency":)" + std::string(value) + "}}");
    start();
    ConversionEngine::getWordsWithFrequencyAndTranslation(*instance).ask(
        [&](const WordTable& table) { EXPECT_EQ(table.frequency("word"), frequency) << value; });
  }
}

TEST_F(WordData, WhatHasAnotherShapeIsLeftOut) {
  putCodes(R"({"C":[1,"xxxx",["xxxy"],null,{"C":["xxxz"]},"xxxw"],"D":"xxxx","E":{"C":["xxxx"]},
               "F":["xxxx"],"F":null})");
  putScript("function phonex(w) { return w[0]; }");
  ConversionEngine& engine = start();
  EXPECT_EQ(engine.getSuggestionOfSpellChecker(u"Cxxx"), (Words{u"xxxx", u"xxxw"}));
  for (const auto* text : {u"Dxxx", u"Exxx", u"Fxxx"}) {
    EXPECT_EQ(engine.getSuggestionOfSpellChecker(text), Words{});
  }
  for (const auto& [value, lines] : std::vector<std::pair<std::string, Words>>{
           {R"({"translation":["a",1,["b"],{"c":"d"},"e"]})", {u"a", u"e"}},
           {R"({"translation":"a"})", {}},
           {R"({"translation":["a"],"translation":null})", {}},
           {R"({"translation":["a"],"translation":["b"]})", {u"b"}},
           {R"([{"translation":["a"]}])", {}},
           {R"({"translation":["a"]},"word":5)", {}},
           {R"(5,"word":{"translation":["a"]})", {u"a"}},
       }) {
    putWords(R"({"word":)" + value + "}");
    EXPECT_EQ(start().getTranslations(u"word"), lines) << value;
  }
  putWords(R"([{"word":{"translation":["a"]}}])");
  EXPECT_EQ(start().getTranslations(u"word"), Words{});
  putWords(R"({"word":{"translation":["a"]},"next":{})");
  EXPECT_EQ(start().getTranslations(u"word"), Words{}) << "half a file counts for nothing";
}

struct WordListFile : WordData {
  std::string refusal() {
    try {
      start();
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return "";
  }
  const std::string path = "/bundle/google_227800_words.bin";
  const std::string whole = snapshot(path.c_str());
  static constexpr std::size_t kSeal = 16;
};

TEST_F(WordListFile, ThatIsSealedIsWholeOrThereIsNoStart) {
  EXPECT_EQ(refusal(), "");
  for (const std::size_t at : {whole.size() / 2, whole.size() - kSeal, whole.size() - 1}) {
    host.files.put(path, whole);
    host.files.damage(path, at, static_cast<std::uint8_t>(whole[at] ^ 1));
    EXPECT_NE(refusal().find(path + " is damaged"), std::string::npos) << at;
  }
  host.files.remove(path);
  EXPECT_EQ(
      refusal(),
      "The word list google_227800_words.bin is missing from the resources. Run scripts/setup, "
      "or install the program again.");
}

TEST_F(WordListFile, ThatSomebodyElseSavedIsReadInBounds) {
  for (const int flags : {3, 1 | MARISA_BINARY_TAIL, 2 | MARISA_LABEL_ORDER}) {
    marisa::Keyset keys;
    for (const char* word : {"the", "there", "thumbling", "bumbling", "these", "x", "y"})
      keys.push_back(word);
    marisa::Trie trie;
    trie.build(keys, flags);
    std::ostringstream stream;
    stream << trie;
    const std::string saved = stream.str();
    Words order;
    marisa::Agent agent;
    agent.set_query("", 0);
    while (trie.predictive_search(agent))
      order.emplace_back(agent.key().ptr(), agent.key().ptr() + agent.key().length());

    host.files.put(path, saved);
    EXPECT_EQ(start().wordsStartsWith(u""), order);
    const auto isRefused = [&](std::string_view content) {
      host.files.put(path, content);
      WordListState list;
      try {
        loadWordList(list, host.files, path);
      } catch (const std::runtime_error& error) {
        return std::string_view(error.what()).find(path + " is damaged") != std::string::npos;
      }
      visitWords(list, "", [](std::string_view word) { EXPECT_LE(word.size(), 1024U); });
      return false;
    };
    int refused = 0;
    for (std::size_t at = 0; at < saved.size(); ++at) {
      EXPECT_TRUE(isRefused(std::string_view(saved).substr(0, at))) << at;
      for (const int mask : {1, 0xFF}) {
        std::string damaged = saved;
        damaged[at] = static_cast<char>(saved[at] ^ mask);
        refused += isRefused(damaged) ? 1 : 0;
      }
    }
    EXPECT_GT(refused, 200) << "damage to what is read";
    std::string twice = saved;
    std::ranges::replace(twice, 'x', 'y');
    EXPECT_TRUE(isRefused(twice));
  }
}

struct Snapshots : WordData {
  Snapshots() {
    std::string words = "{";
    for (int i = 0; i < 150; ++i) {
      const std::string number = std::to_string(i);
      listed.push_back(u"w" + std::u16string(number.begin(), number.end()));
      words += "\"w" + number + "\":{\"frequency\":" + number + ",\"translation\":[\"" +
               std::string(40, 't') + number + "\"]},";
    }
    putWords(words + R"("the":{"frequency":3,"translation":["old"]}})");
    putCodes(R"({"t":["there","these"]})");
    putScript("function phonex(w) { return w[0]; }");
    truth = answers();
  }
  /// Something of each section.
  Words answers() {
    ConversionEngine& engine = start();
    Words all = engine.getCandidates(u"th");
    for (const std::u16string& word : engine.sortWordsByFrequency(listed)) {
      all.push_back(engine.getAnnotation(word));
    }
    const Words suggestions = engine.getSuggestionOfSpellChecker(u"tthere");
    all.insert(all.end(), suggestions.begin(), suggestions.end());
    return all;
  }

  Words listed{u"the"};
  Words truth;
};

TEST_F(Snapshots, AreUsedAsTheyLieUntilAnInputIsAnotherOne) {
  const std::string words = snapshot(kWordsSnapshot);
  ASSERT_FALSE(words.empty());
  host.files.readFails = [](const std::string& path) { return path.ends_with(".json"); };
  EXPECT_EQ(answers(), truth) << "no JSON was read";
  EXPECT_EQ(snapshot(kWordsSnapshot), words);
  host.files.readFails = nullptr;

  putWords(R"({"the":{"translation":["new"]}})");
  EXPECT_EQ(start().getAnnotation(u"the"), u"new");
  host.bundle.remove("frequency_and_ipa.json");
  EXPECT_EQ(start().getAnnotation(u"the"), u"");
  const std::vector<std::string_view> list{"thaw"};
  host.bundle.setWordList(list);
  EXPECT_EQ(start().getCandidates(u"th"), (Words{u"th", u"thaw"}));
  host.bundle.remove("phonex_encoded_words.json");
  EXPECT_EQ(start().getSuggestionOfSpellChecker(u"tthere"), Words{});
}

TEST_F(Snapshots, AreNotMadeOfWhatCouldNotBeRead) {
  putWords(R"({"the":{"translation":["new"]}})");
  host.files.readFails = [](const std::string& path) { return path.ends_with("_ipa.json"); };
  EXPECT_EQ(start().getAnnotation(u"the"), u"");
  host.files.readFails = nullptr;
  EXPECT_EQ(start().getAnnotation(u"the"), u"new");
}

TEST_F(Snapshots, AreDoneWithoutWhereTheyCanNotBeWritten) {
  host.files.remove(kWordsSnapshot);
  host.files.remove(kCodesSnapshot);
  host.files.writeFails = true;
  EXPECT_EQ(answers(), truth);
  EXPECT_FALSE(host.files.has(kWordsSnapshot));
}

TEST_F(Snapshots, ThatAreDamagedAreMadeAnew) {
  std::mt19937 random(1);
  for (const char* path : {kWordsSnapshot, kCodesSnapshot}) {
    const std::string whole = snapshot(path);
    const auto expectMended = [&](const std::string& what) {
      ASSERT_EQ(answers(), truth) << what;
      ASSERT_EQ(answers(), truth) << what << ", the next start";
    };
    // One bit: before the body noticed at the opening, within it when its page is asked for.
    const auto damageAt = [&](std::size_t at) {
      host.files.put(path, whole);
      host.files.damage(path, at, static_cast<std::uint8_t>(whole[at] ^ (1 << random() % 8)));
      expectMended("byte " + std::to_string(at));
    };
    for (std::size_t at = 0; at < 64; at += 4) damageAt(at + random() % 4);
    // Sections begin on pages.
    for (std::size_t page = 0; page < whole.size(); page += 4096) {
      damageAt(page);
      damageAt(whole.find_last_not_of('\0', page + 4095));
      for (const std::size_t size : {page, page + 1 + random() % 4095}) {
        host.files.put(path, std::string_view(whole).substr(0, size));
        expectMended("cut to " + std::to_string(size));
      }
    }
    host.files.put(path, whole + "more");
    expectMended("too long");
    host.files.put(path, snapshot(path == kWordsSnapshot ? kCodesSnapshot : kWordsSnapshot));
    expectMended("another one's");
  }
}

}  // namespace
}  // namespace quorvane
