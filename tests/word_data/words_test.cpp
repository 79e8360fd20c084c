#include "tests/word_data/SourceFolder.h"
#include "tools/word_data/PlainWord.h"
#include "tools/word_data/RankLists.h"
#include "tools/word_data/Scowl.h"
#include "tools/word_data/Selection.h"

namespace quorvane::word_data {
namespace {

TEST(WordData, ListsByTheirNames) {
  int level = 0;
  EXPECT_EQ(kindOfList("english-words.10", level), &Levels::word);
  EXPECT_EQ(level, 10);
  EXPECT_EQ(kindOfList("australian_variant_2-proper-names.80", level), &Levels::name);
  EXPECT_EQ(kindOfList("american-upper.50", level), &Levels::name);
  EXPECT_EQ(kindOfList("english-abbreviations.50", level), &Levels::abbreviation);
  for (const auto* name : {"english-words.95", "english-abbreviations.55", "variant_3-words.10",
                           "english-contractions.10", "special-hacker.50", "english-words.", "x"})
    EXPECT_EQ(kindOfList(name, level), nullptr) << name;
}

TEST(WordData, WordsAreFoldedToPlainLetters) {
  EXPECT_EQ(folded("Caf\u00e9"), "cafe");
  EXPECT_EQ(folded("\u00c6sop"), "aesop");
  EXPECT_EQ(folded("na\u00efvet\u00e9's"), "naivete's");
  EXPECT_FALSE(isPlain("naivete's"));
  EXPECT_FALSE(isPlain(""));
}

TEST(WordData, RanksCountEveryEntryAndKeepPlainWords) {
  const SourceFolder folder;
  const Ranks json = readJsonRanks(folder.write("a.json", R"(["you","'s","caf\u00e9","you"])"));
  EXPECT_EQ(json, (Ranks{{"you", 1}, {"cafe", 3}}));
  const Ranks script =
      readScriptRanks(folder.write("a.js", "(function(){\n module.exports = \"THE\\nOF\".split"));
  EXPECT_EQ(script, (Ranks{{"the", 1}, {"of", 2}}));
  EXPECT_TRUE(readRankLists(folder.path() / "missing").books.empty());
}

TEST(WordData, ADamagedRankListIsNamed) {
  const SourceFolder folder;
  for (const auto* text : {"", "{}", "[1]", "[\"a\"", "[]", "[\"\xff\"]"}) {
    const auto file = folder.write("a.json", text);
    EXPECT_TRUE(sourceError([&] { readJsonRanks(file); }).starts_with(file.string())) << text;
  }
  for (const auto* text :
       {"", "module.exports = 1", "module.exports = \"THE", "module.exports = \""}) {
    const auto file = folder.write("a.js", text);
    EXPECT_TRUE(sourceError([&] { readScriptRanks(file); }).starts_with(file.string())) << text;
  }
  const auto file = folder.write("b", "fine\nn\xe9\n");
  EXPECT_EQ(sourceError([&] { TextFile{file}; }), file.string() + ":2: not UTF-8");
}

TEST(WordData, WordsWithoutARankGoByTheirLevel) {
  Tables tables;
  tables.functionWords["the"] = {"det."};
  const RankLists ranks{{{"far", 5'000'000}}, {}};
  const Frequencies model(ranks, tables);
  const int levels[] = {10, 20, 35, 40, 50, 55, 60, 70, 80};
  for (int i = 0; i < 9; ++i) EXPECT_EQ(model.frequency("word", {.word = levels[i]}), 9 - i);
  EXPECT_EQ(model.frequency("far", {.word = 80}), 10) << "the least of a word with a rank";
  EXPECT_EQ(model.frequency("the", {.word = 10}), 9);
  EXPECT_EQ(Frequencies({}, tables).frequency("the", {.word = 10}), 10) << "no ranks at all";
}

TEST(WordData, TheListTakesWhatIsCommonFirst) {
  const RankLists ranks{{{"anna", 50}, {"tv", 714}, {"seldom", 9000}, {"fbi", 9000}, {"uk", 9000}},
                        {}};
  Tables tables;
  tables.admitted = {"uk", "lol"};
  tables.vowelless = {"tv"};
  const Candidates candidates{
      {"e", {.word = 10}},           {"a", {.word = 10}},      {"csch", {.word = 60}},
      {"anna", {.name = 80}},        {"otto", {.name = 10}},   {"tv", {.abbreviation = 40}},
      {"fbi", {.abbreviation = 40}}, {"seldom", {.word = 80}}, {"rarely", {.word = 80}},
      {"known", {.word = 80}},       {"odd", {.word = 80}},    {"drat", {.word = 10}}};
  const auto taken = [&](std::size_t count) {
    std::string text;
    for (const Word& word : selectWords(
             candidates, ranks, tables, [](const auto& w) { return w == "known"; },
             [](const auto& w) { return w == "drat"; }, count))
      text += word.text + ' ';
    return text;
  };
  EXPECT_EQ(taken(4), "anna seldom tv uk ");
  EXPECT_EQ(taken(5), "a anna seldom tv uk ");
  EXPECT_EQ(taken(6), "a anna known seldom tv uk ");
  EXPECT_EQ(taken(7), "a anna known odd seldom tv uk ");
  const std::vector<Word> kept =
      offensiveWords(candidates, [](const auto& w) { return w == "drat"; });
  ASSERT_EQ(kept.size(), 1U);
  EXPECT_EQ(kept[0].text + std::to_string(kept[0].frequency), "drat-1");
  EXPECT_EQ(taken(99), "a anna known odd rarely seldom tv uk ");
}

}  // namespace
}  // namespace quorvane::word_data
