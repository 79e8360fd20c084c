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
}

TEST_F(Fallback, OffersAWordInOneCaseAndNoneThatIsNotToBe) {
  putWords(R"({"drat":{"frequency":-1},"qqa":{"frequency":0}})");
  host.spellChecker.guesses = {{u"qqq", {u"Qq", u"Drat", u"qqa", u"qq", u"drat's", u"QQA"}}};
  EXPECT_EQ(start().getCandidates(u"qqq"), (Words{u"qqq", u"Qq", u"qqa"}));
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

TEST(Distance, CountsInsertionsDeletionsAndReplacements) {
  const auto distance = [](std::u16string a, const std::u16string& b) {
    return Levenshtein(a).mdc_levenshteinDistanceTo(std::u16string_view(b));
  };
  EXPECT_EQ(distance(u"kitten", u"sitting"), 3U);
  EXPECT_EQ(distance(u"ab", u"ba"), 2U) << "a swap is two";
  EXPECT_EQ(distance(u"", u"\u00e9\U0001F600"), 3U) << "in UTF-16 units";
  for (const std::size_t size : {63U, 64U, 65U, 130U}) {
    EXPECT_EQ(distance(std::u16string(size, u'a'), std::u16string(size + 1, u'a') + u'b'), 2U);
  }
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
