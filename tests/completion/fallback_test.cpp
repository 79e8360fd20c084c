// What is offered for a text that no word begins with, and what is shown beside a word.

#include <algorithm>
#include <random>

#include "src/base/Text.h"
#include "src/completion/Levenshtein.h"
#include "tests/completion/EngineTest.h"

namespace quorvane {
namespace {

struct Fallback : test::EngineTest {
  Fallback() { putScript("var calls = 0; function phonex(w) { return 'C' + ++calls + w[0]; }"); }
};

TEST_F(Fallback, GuessesThenSoundAlikesFourOfEach) {
  putCodes(R"({"C1x":["xxxx1234","xxxxabc","yxxx","xxx","zxxx","wxxx","xxxxa"],
               "C2x":["xxxxwxyz"], "C3x":["xxxx\u00e9"]})");
  const Words ten{u"g0", u"g1", u"g2", u"g3", u"g4", u"g5", u"g6", u"g7", u"g8", u"g9"};
  host.spellChecker.guesses = {{u"xxx", ten}, {u"xxxx", ten}};
  ConversionEngine& engine = start();
  EXPECT_EQ(engine.getSuggestionOfSpellChecker(u"xxx"), ten) << "three letters: no script";
  EXPECT_EQ(engine.getSuggestionOfSpellChecker(u"xxxx"),
            (Words{u"g0", u"g1", u"g2", u"g3", u"yxxx", u"xxx", u"zxxx", u"wxxx"}))
      << "its first call; of equal distance in the table's order";
  EXPECT_EQ(engine.getSuggestionOfSpellChecker(u"xxxx"), ten) << "a distance of 4 is too far";
  EXPECT_EQ(engine.getSuggestionOfSpellChecker(u"xxxxz"), (Words{u"xxxx\u00e9"}));
  host.spellChecker.guesses = {{u"qqq", {u"Qq", u"qqa", u"qq", u"QQA"}}};
  EXPECT_EQ(engine.getCandidates(u"qqq"), (Words{u"qqq", u"Qq", u"qqa"})) << "in one case";
}

TEST_F(Fallback, WithoutAnEncoderOrATableGuessesStandAlone) {
  host.spellChecker.guesses[u"xxxx"] = {u"g"};
  const auto suggestions = [this] { return start().getSuggestionOfSpellChecker(u"xxxx"); };
  EXPECT_EQ(suggestions(), Words{u"g"}) << "no table";
  putCodes(R"({"C1x":["xxxy"]})");
  EXPECT_EQ(suggestions(), (Words{u"g", u"xxxy"}));
  for (const char* script : {"function phonex(", "var phonex = 3;", "\xFF", "throw 'no'",
                             "function phonex() { throw 'no' }", "function phonex() {}"}) {
    putScript(script);
    EXPECT_EQ(suggestions(), Words{u"g"}) << script;
  }
  host.bundle.remove("phonex.js");
  EXPECT_EQ(suggestions(), Words{u"g"});
}

std::size_t distanceByTheBook(const std::u16string& a, const std::u16string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::vector<std::size_t> next{i};
    for (std::size_t j = 1; j <= b.size(); ++j) {
      next.push_back(std::min({next[j - 1] + 1, row[j] + 1, row[j - 1] + (a[i - 1] != b[j - 1])}));
    }
    row = next;
  }
  return row.back();
}

TEST(Distance, IsTheOneOfTheBookForAllLengths) {
  const auto seed = std::random_device{}();
  std::mt19937 random(seed);
  const auto text = [&random](std::size_t longest) {
    std::u16string result(random() % (longest + 1), u'a');
    for (char16_t& unit : result) unit = u"ab\u00e9\U0001F600"[random() % 5];
    return result;
  };
  for (int i = 0; i < 2000; ++i) {
    const std::u16string a = text(i % 2 == 0 ? 8 : 90);
    const std::u16string b = text(i % 2 == 0 ? 8 : 90);
    ASSERT_EQ(Levenshtein(a).mdc_levenshteinDistanceTo(std::u16string_view(b)),
              distanceByTheBook(a, b))
        << "seed " << seed;
  }
  EXPECT_EQ(Levenshtein(std::u16string(64, u'a')).mdc_levenshteinDistanceTo(std::string(65, 'a')),
            1U);
  EXPECT_EQ(Levenshtein(std::u16string(65, u'a')).mdc_levenshteinDistanceTo(std::string(64, 'a')),
            1U);
}

struct Annotation : test::EngineTest {};

TEST_F(Annotation, HasTheSymbolAndALineForEachTranslation) {
  putWords(R"({"there":{"ipa":"\u00f0\u025b\u0259","translation":["at that place","a \"line\""]},
               "the":{"ipa":"x","translation":["article"]}, "into":{"ipa":"","translation":["in"]},
               "that":{"ipa":"x","translation":[]}, "lone":{"ipa":"x"}, "uneven":{"ipa":"x",
               "translation":["",""]}, "caf\u00e9":{"translation":["a house"]}})");
  ConversionEngine& engine = start();
  for (const auto& [word, annotation] : std::vector<std::pair<std::u16string, std::u16string>>{
           {u"THere", u"[\u00f0\u025b\u0259]\nat that place\na \"line\""},
           {u"The", u"article"},
           {u"into", u"in"},
           {u"that", u""},
           {u"lone", u""},
           {u"uneven", u"[x]\n\n"},
           {u"CAF\u00c9", u"a house"},
           {u"unknown", u""},
           {u"", u""}}) {
    EXPECT_EQ(engine.getAnnotation(word), annotation) << toUtf8(word);
  }
  EXPECT_EQ(engine.getTranslations(u"THERE"), Words{}) << "looked up as it is given";
  EXPECT_EQ(engine.getPhoneticSymbolOfWord(u"The"), u"");
  EXPECT_EQ(engine.getPhoneticSymbolOfWord(u"That"), u"x");
}

}  // namespace
}  // namespace quorvane
