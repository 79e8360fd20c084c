// The stand-in's words and choices, without a second process.

#include <gtest/gtest.h>
#include <malloc.h>

#include <map>

#include "tests/support/RunningProgram.h"
#include "tools/checker/Fix.h"
#include "tools/checker/Passages.h"
#include "tools/checker/PopupList.h"
#include "tools/checker/SentenceStart.h"
#include "tools/checker/Spelling.h"
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

class ScriptedChoice : public WordChoice {
 public:
  std::map<std::string, std::vector<std::string>> mistakes;
  std::vector<std::string> offers(const TypedWord& word) override { return mistakes[word.spelt]; }
  std::optional<std::string> replacement(const TypedWord& word) override {
    const auto& found = mistakes[word.spelt];
    return found.empty() ? std::nullopt : std::optional(found.front());
  }
};

TEST(CheckerWordRules, WhichWordIsChecked) {
  const std::map<std::string, std::string> rows = {
      {"a teh ", "teh"},      {"teh,", "teh"},         {"teh, ", "-"},      {"teh", "-"},
      {"teh-", "-"},          {"te2h ", "-"},          {"TEH ", "-"},       {"Teh ", "Teh"},
      {"'teh' ", "teh"},      {"'tis ", "-"},          {"goin' ", "-"},     {"www.teh ", "-"},
      {"well-teh ", "teh"},   {"\xC3teh ", "-"},       {"", "-"},           {"te\xD5h ", "te\xD5h"},
      {"\xD2teh\xD3", "teh"}, {"\xD4teh\xD5 ", "teh"}, {"teh-\xD1", "teh"}, {"[p]teh ", "-"},
  };
  for (const auto& [text, word] : rows) EXPECT_EQ(wordOf(typed(text)), word) << text;
  TextRecord other = typed("teh ");
  other.key = 29;
  EXPECT_EQ(wordOf(other), "-") << "an arrow key";
  other = typed("te\xD5h ");
  other.smartCharacters = false;
  EXPECT_EQ(wordOf(other), "-") << "a letter of another script";
}

TEST(CheckerSentenceStart, WhiteSpaceBehindItsMark) {
  const std::map<std::string, bool> rows = {
      {"a. ", true},   {"a?\r", true},        {"a!\t", true},     {"a.\") ", true}, {". ", true},
      {"3.5 ", false}, {"a.\xD3\xD5 ", true}, {"e.g. ", false},   {"a.", false},    {"a.)", false},
      {"a.  ", false}, {"a, ", false},        {"(a. b) ", false}, {" ", false},     {"3.5. ", true},
  };
  for (const auto& [text, starts] : rows) EXPECT_EQ(startsSentence(typed(text)), starts) << text;
  TextRecord other = typed("a. ");
  other.key = 29;
  EXPECT_FALSE(startsSentence(other)) << "an arrow key";
  other = typed("a.x");
  other.key = ' ';
  EXPECT_FALSE(startsSentence(other)) << "a key that isn't in the text";
  other = typed("a.\xD3 ");
  other.smartCharacters = false;
  EXPECT_FALSE(startsSentence(other)) << "a letter of another script";
}

TEST(CheckerPopupList, OnlyWhatIsWrittenIsRead) {
  const PopupList list{"teh", {"the", "don't"}};
  EXPECT_EQ(parsePopupList(formatPopupList(list).value_or("")), list);
  const std::string nine = "w\n1\n2\n3\n4\n5\n6\n7\n8\n9\n";
  EXPECT_TRUE(parsePopupList(nine));
  for (const std::string& text : std::vector<std::string>{
           "", "teh\n", "teh\nthe", "teh\n\n", "\nthe\n", "teh\nth\x1B\n", "teh\nth\xC3\xA9\n",
           nine + "10\n", "teh\n" + std::string(64, 'x') + "\n"}) {
    EXPECT_FALSE(parsePopupList(text)) << text;
  }
  const tests::OwnFolder folder;
  EXPECT_FALSE(readPopupList(folder.path()));
  EXPECT_TRUE(writePopupList(folder.path(), list));
  EXPECT_EQ(readPopupList(folder.path()), list);
  EXPECT_FALSE(writePopupList(folder.path(), {"teh", {}}));
  EXPECT_FALSE(readPopupList(folder.path())) << "what stood there is gone";
}

TEST(CheckerFix, CountsWhatWillStandBeforeTheCaretAndSpeaksTheDocumentsLanguage) {
  ScriptedChoice choice;
  choice.mistakes = {{"teh", {"the"}}, {"dosen't", {"doesn't"}}, {"mistke", {"mistake"}}};
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
           Row{"teh-\xD1", 4, "the\u2014", "the-\xD1"},
       }) {
    const auto fix = findFix({typed(row.text)}, choice);
    ASSERT_TRUE(fix) << row.text;
    EXPECT_EQ(fix->count, row.count);
    EXPECT_EQ(fix->text, row.sent);
    EXPECT_EQ(fix->corrected.text, typed(row.corrected).text);
  }
  const auto full = findFix({typed(std::string(377, ' ') + "mistke ")}, choice);
  EXPECT_EQ(full->corrected.text, typed("mistake ").text) << "no room";
  TextRecord behind = typed("mistke ");
  behind.length = 20;
  EXPECT_EQ(findFix({behind}, choice)->corrected.length, 8U) << "no tail that has moved";
  EXPECT_EQ(typedCharacter(behind, '7').corrected.length, 8U);
  EXPECT_EQ(typedCharacter(typed(std::string(384, 'x')), '7').corrected.text, typed("7").text);
}

TEST(CheckerFix, OffersWhatADictionaryHasOnceEachAsTheWordIsWritten) {
  ScriptedChoice choice;
  choice.mistakes = {{"Teh", {"Tech", "tech", "the", "Teh", "t eh", "caf\xC3\xA9"}}};
  for (char c = 'a'; c <= 'j'; ++c) choice.mistakes["qwx"].push_back(std::string(2, c));
  const auto offers = findOffers({typed("Teh ")}, choice);
  ASSERT_EQ(offers.size(), 2U);
  EXPECT_EQ(offers[0].text, "Tech ");
  EXPECT_EQ(offers[1].text, "The ");
  EXPECT_EQ(findOffers({typed("qwx ")}, choice).size(), 9U);
}

class PassagesAlone : public ScriptedChoice {
 public:
  std::optional<Passage> passage(const TypedWord& word) override {
    return passages_.endingIn(word);
  }

 private:
  Passages passages_{{}, [](std::string_view word) { return word == "apple"; }};
};

TEST(CheckerFix, APassageIsOfferedWhereItIsNotCertain) {
  PassagesAlone choice;
  const std::pair<std::string, std::string> rows[] = {
      {"on the the ", "the "},    {"No no ", ""},
      {"on an lock ", "a lock "}, {"it could of ", "could have "},
      {"of course ", ""},         {"plan A apple ", "An apple "},
      {"the\rthe ", ""}};
  for (const auto& [text, offered] : rows) {
    const auto offers = findOffers({typed(text)}, choice);
    EXPECT_EQ(offers.empty() ? "" : offers.front().text, offered) << text;
    EXPECT_FALSE(findFix({typed(text)}, choice)) << text;
  }
  EXPECT_EQ(findFix({typed("on a apple ")}, choice)->text, "an apple ");
  EXPECT_FALSE(findFix({typed("on a apple "), 4}, choice)) << "begins before what is vouched for";
}

TEST(CheckerSpelling, AThousandMistakesLeaveNothingBehind) {
  const auto spelling = openEnchant("en_US");
  ASSERT_TRUE(spelling);
  spelling->suggestions("teh");
  const std::size_t before = ::mallinfo2().uordblks;
  for (int i = 0; i < 1000; ++i) EXPECT_FALSE(spelling->suggestions("teh").empty());
  EXPECT_FALSE(spelling->accepts("teh"));
  constexpr std::size_t kAFewMegabytes = 6'000'000;  // of the 18 that they would be
  EXPECT_LT(::mallinfo2().uordblks, before + kAFewMegabytes);
}

TEST(CheckerVouching, AWordIsVouchedForFromTheFirstBoundarySeen) {
  using Start = std::optional<std::size_t>;
  struct Row {
    SessionKey session;
    std::string text;
    std::uint32_t change;
    Start vouchedFrom;
  };
  const std::string sentence = "hello k x " + std::string(310, 'a') + ". ";
  Vouching late(false);
  for (const Row& row : {
           Row{{1, 1}, "hello ld ", 0, {}},
           Row{{1, 1}, "hello ld teh ", 0, 9},
           Row{{1, 2}, "ab ", 0, {}},
           Row{{2, 1}, "ab ", 0, {}},
           Row{{1, 1}, "hello k ", 0, {}},
           Row{{1, 1}, "hello k x ", kTextCancelled, {}},
           Row{{1, 1}, sentence, 0, 10},
           Row{{1, 1}, "Teh ", 0, 0},
       }) {
    EXPECT_EQ(late.observe(row.session, typed(row.text), row.change).vouchedFrom, row.vouchedFrom)
        << row.text;
  }
}

}  // namespace
}  // namespace quorvane::checker
