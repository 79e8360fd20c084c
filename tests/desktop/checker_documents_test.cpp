// What is found in a text, what is counted in it, and how a window is told, as tables.

#include <gtest/gtest.h>

#include "src/base/Text.h"
#include "tools/checker/WindowFile.h"
#include "tools/checker/documents/CheckWindow.h"
#include "tools/checker/documents/Statistics.h"

namespace quorvane::checker {
namespace {

/// Knows three mistakes.
class ThreeMistakes : public WordChoice {
 public:
  std::optional<std::string> replacement(const TypedWord& /*word*/) override { return {}; }
  std::optional<Passage> passage(const TypedWord& word) override {
    if (word.spelt != "of" || word.before.size() < 6) return std::nullopt;
    return Passage{word.before.size() - 6, "could of", "could have", true};
  }
  std::vector<std::string> offers(const TypedWord& word) override {
    if (word.spelt == "dont'") return {"don't"};
    if (word.spelt == "does'nt") return {"doesn't"};
    return word.spelt == "teh" ? std::vector<std::string>{"the", "tea"}
                               : std::vector<std::string>{};
  }
};

constexpr CheckScope kAll{}, kSpelling{true, false}, kGrammar{false, true};

DocumentCheck checked(const std::u16string& text, CheckScope scope = kAll) {
  static ThreeMistakes choice;
  DocumentCheck check(documentTextOf(text), choice, scope);
  while (check.step()) continue;
  return check;
}

/// "place found>first suggestion", one behind the other.
std::string findingsIn(const std::u16string& text, CheckScope scope) {
  std::string all;
  const DocumentCheck check = checked(text, scope);
  for (const Finding& finding : check.findings()) {
    all += (all.empty() ? "" : "|") + std::to_string(finding.start) + " " + toUtf8(finding.found) +
           ">" + toUtf8(finding.suggestions.front());
  }
  return all;
}

TEST(CheckedDocument, FindsWhatIsThereAndNothingElse) {
  struct Row {
    std::u16string text;
    CheckScope scope;
    std::string findings;
  };
  for (const Row& row : {
           Row{u"a teh", kAll, "2 teh>the"},
           {u"teh.\nteh", kAll, "0 teh>the|5 teh>The"},
           {u"\u201Cteh\u201D \u2018teh\u2019 teh\u2014x", kAll, "1 teh>the|7 teh>the|12 teh>the"},
           {u"he does\u2019nt", kAll, "3 does\u2019nt>doesn\u2019t"},
           {u"\U0001F600 teh \u0416teh x@teh teh/x", kAll, "3 teh>the"},
           {u"qui est teh ", kAll, ""},
           {u"we could of gone", kAll, "3 could of>could have"},
           {u"teh could of", kSpelling, "0 teh>the"},
           {u"teh could of", kGrammar, "4 could of>could have"},
           {u"So be quiet. teh cat", kAll, "13 teh>The"},
           {u"We saw. we went! we,", kAll, "8 we>We|17 we>We"},
           {u"we saw e.g. we, etc. we, \"Go!\" we, Dr. we... we", kAll, ""},
           {u"Name file. txt? I. we\nwe", kGrammar, "11 txt>Txt"},
           {u"wait , then  . x .NET x !y", kGrammar, "4  ,>,|11   .>."},
           {u"we go ,", kSpelling, ""},
           {std::u16string(4000, u'x') + u" teh" + std::u16string(400, u' ') + u"teh", kAll,
            "4001 teh>the|4404 teh>the"},
       }) {
    EXPECT_EQ(findingsIn(row.text, row.scope), row.findings) << toUtf8(row.text.substr(0, 60));
  }
}

TEST(CheckedDocument, KeysDecideAndTheTextFollows) {
  struct Row {
    std::u32string keys;
    WindowOutcome outcome;
    std::u16string text;
  };
  const std::u16string text = u"teh cat , teh dog ";
  for (const Row& row : {Row{U"\rs2", WindowOutcome::Pastes, u"the cat , tea dog "},
                         {U"3x1a", WindowOutcome::Pastes, u"the cat, the dog "},
                         {U"sss", WindowOutcome::Closes, text},
                         {U"1\x1B", WindowOutcome::Closes, u"the cat , teh dog "}}) {
    CheckWindow window(u"Check", checked(text), false);
    for (std::size_t i = 0; i < row.keys.size(); ++i) {
      const bool last = i + 1 == row.keys.size();
      EXPECT_EQ(window.press(row.keys[i]), last ? row.outcome : WindowOutcome::StaysOpen);
    }
    EXPECT_EQ(window.textToPaste(), row.text);
  }
  CheckWindow marks(u"Marks", checked(text), true);
  EXPECT_EQ(marks.press(13), WindowOutcome::Pastes);
  EXPECT_EQ(marks.textToPaste(), u"[teh: the] cat[ ,: ,] [teh: the] dog ");
  CheckWindow nothing(u"Check", checked(u""), false);
  EXPECT_EQ(nothing.press(U'1'), WindowOutcome::StaysOpen);
  EXPECT_EQ(nothing.press(13), WindowOutcome::Closes);
}

TEST(CheckedDocument, ABrokenPageIsNone) {
  for (const std::string& broken :
       {std::string(), std::string("title\n"), std::string("t\nk\nline"),
        std::string("t\nk\n\x1B\n"), std::string("t\nk\n\xFF\n"),
        "t\nk\n" + std::string(67, 'x') + '\n', "t\nk\n" + std::string(13, '\n')}) {
    EXPECT_FALSE(parseWindowFile(broken)) << broken;
  }
}

TEST(CheckedDocument, IsMeasured) {
  struct Row {
    std::u16string text;
    std::vector<std::size_t> sentences;
    std::size_t syllables;
  };
  for (const Row& row : {Row{u"", {}, 0},
                         {u"The cat sat on the mat.", {6}, 6},
                         {u"It's 3.5 well-made e.g.\n\nNo! (Yes.) So", {4, 1, 1, 1}, 8},
                         {u"A little table wanted, baked; readability", {6}, 13}}) {
    const Statistics statistics = statisticsOf(row.text);
    EXPECT_EQ(statistics.sentences, row.sentences) << toUtf8(row.text);
    EXPECT_EQ(statistics.syllables, row.syllables) << toUtf8(row.text);
  }
  EXPECT_NEAR(readingEase(statisticsOf(u"The cat sat on the mat.")), 116.145, 0.001);
  EXPECT_EQ(
      drawSentenceLengths({.sentences = {1, 132}}, 66),
      (std::vector<std::u16string>{u"    1 \u2588", u"  132 " + std::u16string(60, u'\u2588')}));
}

}  // namespace
}  // namespace quorvane::checker
