// The stand-in's words and choices, without a second process.

#include <gtest/gtest.h>

#include <map>

#include "tools/checker/Fix.h"
#include "tools/checker/Spelling.h"
#include "tools/checker/SuggestionChoice.h"
#include "tools/checker/ToolRecord.h"
#include "tools/checker/Vouching.h"
#include "tools/checker/WordRules.h"

namespace quorvane::checker {
namespace {

TextRecord typed(std::string_view text) {
  TextRecord record{{text.begin(), text.end()}, text.size(), 0, true};
  if (!text.empty()) record.key = record.text.back();
  return record;
}

std::string wordOf(const TextRecord& record) {
  const auto word = endedWord(record);
  if (!word) return "-";
  return {record.text.begin() + static_cast<std::ptrdiff_t>(word->start),
          record.text.begin() + static_cast<std::ptrdiff_t>(word->end)};
}

class ScriptedSpelling : public Spelling {
 public:
  std::map<std::string, std::vector<std::string>> mistakes;
  bool accepts(const std::string& word) override { return !mistakes.contains(word); }
  std::vector<std::string> suggestions(const std::string& word) override { return mistakes[word]; }
};

TEST(CheckerWordRules, WhichWordIsChecked) {
  const std::map<std::string, std::string> rows = {
      {"a teh ", "teh"},       {"teh,", "teh"},         {"teh, ", "-"},
      {"\"teh\"", "teh"},      {"teh\t", "teh"},        {"teh", "-"},
      {"teh-", "-"},           {"te2h ", "-"},          {"TEH ", "-"},
      {"Teh ", "Teh"},         {"doesn't ", "doesn't"}, {"'teh' ", "teh"},
      {"'tis ", "-"},          {"goin' ", "-"},         {"www.teh ", "-"},
      {"me@teh.", "-"},        {"well-teh ", "teh"},    {"\xC3teh ", "-"},
      {"te\xD5h ", "te\xD5h"}, {"\xD2teh\xD3", "teh"},  {"\xD4teh\xD5 ", "teh"},
      {"caf\xC3 teh ", "teh"}, {"a\xD1teh ", "teh"},    {"", "-"},
  };
  for (const auto& [text, word] : rows) EXPECT_EQ(wordOf(typed(text)), word) << text;
}

TEST(CheckerWordRules, WithoutSmartCharactersTheirBytesAreLettersOfOtherScripts) {
  for (const std::string text : {"teh\xD3", "te\xD5h ", "\xD2teh ", "a\xD1teh ", "teh\xD0 "}) {
    TextRecord record = typed(text);
    record.smartCharacters = false;
    EXPECT_EQ(wordOf(record), "-") << text;
  }
}

TEST(CheckerSuggestions, TyposAreMendedAndNamesAreLeft) {
  struct Row {
    std::string word;
    bool midSentence;
    std::vector<std::string> suggestions;
    std::string chosen;
  };
  const std::vector<Row> rows = {
      {"Teh", false, {"tech", "the"}, "The"},
      {"Teh", true, {"Tech", "The"}, "The"},
      {"adn", true, {"Adan", "Dan", "and"}, "and"},
      {"dont", true, {"dint", "don't"}, "don't"},
      {"seperate", true, {"desperate", "separate"}, "separate"},
      {"occured", true, {"occur ed", "occur-ed", "occurred"}, "occurred"},
      {"monday", true, {"Monday", "noonday"}, "Monday"},
      {"btw", true, {"bet", "BTW"}, "-"},
      {"kafe", true, {"caf\xC3\xA9"}, "-"},
      {"Smyth", true, {"Smith"}, "-"},
      {"Quorvane", false, {"Quorate"}, "-"},
      {"alot", true, {"a lot"}, "-"},
      {"teh", true, {}, "-"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(chooseSuggestion(row.word, row.midSentence, row.suggestions).value_or("-"),
              row.chosen)
        << row.word;
  }
}

TEST(CheckerFix, CountsWhatWillStandBeforeTheCaretAndSpeaksTheDocumentsLanguage) {
  ScriptedSpelling spelling;
  spelling.mistakes = {{"teh", {"the"}}, {"recieve", {"receive"}}, {"dosen't", {"doesn't"}}};
  struct Row {
    std::string text;
    std::uint32_t count;
    std::string sent;
    std::string corrected;
  };
  for (const Row& row : {
           Row{"a teh ", 4, "the ", "a the "},
           Row{"teh\r", 4, "the\n", "the\r"},
           Row{"teh\xD3", 4, "the\u201D", "the\xD3"},
           Row{"dosen\xD5t ", 8, "doesn\u2019t ", "doesn\xD5t "},
           Row{"'teh' ", 5, "the' ", "'the' "},
       }) {
    const auto fix = findFix(typed(row.text), 0, spelling);
    ASSERT_TRUE(fix) << row.text;
    EXPECT_EQ(fix->count, row.count);
    EXPECT_EQ(fix->text, row.sent);
    EXPECT_EQ(fix->corrected.text, typed(row.corrected).text);
  }
  EXPECT_FALSE(findFix(typed("a teh "), 3, spelling));
  EXPECT_TRUE(findFix(typed("a teh "), 2, spelling));
}

TEST(CheckerFix, TheTailBehindTheCaretStaysOnlyWhereItNeedNotMove) {
  ScriptedSpelling spelling;
  spelling.mistakes = {{"teh", {"the"}}, {"mistke", {"mistake"}}};
  TextRecord record = typed("teh ");
  record.length = 9;
  EXPECT_EQ(findFix(record, 0, spelling)->corrected.length, 9U);
  record = typed("mistke ");
  record.length = 20;
  EXPECT_EQ(findFix(record, 0, spelling)->corrected.length, 8U);
  record = typed(std::string(377, ' ') + "mistke ");
  EXPECT_FALSE(findFix(record, 0, spelling)) << "385 bytes have no room";
}

TEST(CheckerVouching, AWordIsVouchedForFromTheFirstBoundarySeen) {
  using Start = std::optional<std::size_t>;
  Vouching ours(true);
  EXPECT_EQ(ours.observe({1, 1}, typed("teh "), 0).vouchedFrom, Start(0));
  EXPECT_FALSE(ours.observe({1, 1}, typed("teh "), 0).isNew);
  EXPECT_EQ(ours.observe({1, 1}, typed("x "), kTextCancelled).vouchedFrom, Start());
  EXPECT_EQ(ours.observe({1, 1}, typed("x teh "), 0).vouchedFrom, Start(2));

  Vouching late(false);
  TextRecord arrow = typed("hello ");
  arrow.key = 29;
  EXPECT_EQ(late.observe({1, 1}, arrow, 0).vouchedFrom, Start())
      << "no boundary typed under our eyes";
  EXPECT_EQ(late.observe({1, 1}, typed("hello ld "), 0).vouchedFrom, Start());
  EXPECT_EQ(late.observe({1, 1}, typed("hello ld teh "), 0).vouchedFrom, Start(9));
  EXPECT_EQ(late.observe({1, 2}, typed("ab "), 0).vouchedFrom, Start()) << "another session";
  EXPECT_EQ(late.observe({2, 1}, typed("ab "), 0).vouchedFrom, Start()) << "another process";
  EXPECT_EQ(late.observe({1, 1}, typed("hello k "), 0).vouchedFrom, Start())
      << "gone back behind it";
}

TEST(CheckerVouching, ASentencesEndThatEmptiesTheTextIsABoundary) {
  using Start = std::optional<std::size_t>;
  const std::string sentence = "x " + std::string(316, 'a') + ". ";
  Vouching vouching(false);
  vouching.observe({1, 1}, typed("x "), 0);
  vouching.observe({1, 1}, typed(sentence), 0);
  EXPECT_EQ(vouching.observe({1, 1}, typed("Teh "), 0).vouchedFrom, Start(0));
}

TEST(CheckerSpelling, TheRealDictionaryMendsOrdinaryTypos) {
  const auto spelling = openEnchant("en_US");
  ASSERT_NE(spelling, nullptr);
  const std::map<std::string, std::string> rows = {
      {"adn ", "and "},        {"definately ", "definitely "},
      {"doesnt ", "doesn't "}, {"a Kowalski ", ""},
      {"doesn't ", ""},
  };
  for (const auto& [text, sent] : rows) {
    const auto fix = findFix(typed(text), 0, *spelling);
    EXPECT_EQ(fix ? fix->text : "", sent) << text;
  }
  EXPECT_EQ(openEnchant("xx_XX"), nullptr);
}

}  // namespace
}  // namespace quorvane::checker
