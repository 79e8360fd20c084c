#include "tests/word_data/SmallWordNet.h"
#include "tools/word_data/Glosses.h"

namespace quorvane::word_data {
namespace {

using Lines = std::vector<std::string>;

struct Case {
  const char* name;
  const char* text;
  const char* error;
};

TEST(WordData, SensesOfTheWordAndOfItsBase) {
  const SourceFolder folder;
  SmallWordNet source;
  source.add("noun", "obscenity", {"dirty talk"});
  source.add("noun", "drat", {"curse"}, ";u 00000000 n 0000");
  source.add("noun", "tom", {"cat"}, ";u 00000000 n 0000");
  source.add("verb", "see", {"look at; \"see here\"", "understand"});
  source.add("noun", "saw", {"tool that cuts", "old saying"});
  source.add("verb", "seed", {"put into the ground"});
  source.add("verb", "receive", {"get"});
  source.add("adj", "received", {"rare", "accepted as `true'"});
  source.add("noun", "try", {"attempt"});
  source.add("verb", "run", {"move fast"});
  source.counts =
      "received%5:00:00:x:00 2 2\nreceive%2:40:00:: 1 30\nsaw%1:06:00:: 2 4\n"
      "see%2:39:00:: 1 500\nseed%2:35:00:: 1 3\nunknown%1:06:00:: 1 4\n";
  source.exceptions = "saw see\n";
  source.write(folder);
  const WordNet dictionary(folder.path());
  Tables tables;
  tables.functionWords["us"] = {"pron. we"};
  tables.offensiveWords = {"see"};
  tables.offensiveStems = {"recei"};
  tables.inoffensive = {"tom"};
  const Glosses glosses(dictionary, tables);
  EXPECT_EQ(glosses.lines("see"), (Lines{"v. look at", "v. understand"}));
  EXPECT_EQ(glosses.lines("saw"),
            (Lines{"v. (see) look at", "n. old saying", "n. tool that cuts"}));
  EXPECT_EQ(glosses.lines("seed"), (Lines{"v. put into the ground"}));
  EXPECT_EQ(glosses.lines("received"),
            (Lines{"v. (receive) get", "adj. accepted as 'true'", "adj. rare"}));
  EXPECT_EQ(glosses.lines("tries"), (Lines{"n. (try) attempt"}));
  EXPECT_EQ(glosses.lines("running"), (Lines{"v. (run) move fast"}));
  EXPECT_EQ(glosses.lines("us"), (Lines{"pron. we"}));
  EXPECT_EQ(glosses.lines("zzz"), Lines{});
  std::string offensive;
  for (const char* word : {"drat", "drats", "obscenity", "received", "saw", "see", "tom", "zzz"})
    offensive += glosses.isOffensive(word) ? std::string(word) + ' ' : "";
  EXPECT_EQ(offensive, "drat drats received see ");
}

TEST(WordData, LongGlossesEndAtAThoughtOrAWord) {
  const std::string half(70, 'x');
  EXPECT_EQ(shownGloss(half + "; " + half), half);
  EXPECT_EQ(shownGloss("x; " + half + " " + half), "x; " + half + "…");
  EXPECT_EQ(shownGloss(std::string(120, 'x')), std::string(120, 'x'));
  EXPECT_EQ(shownGloss("x" + std::string(500, '\xa9')), "…") << "never within a character";
}

TEST(WordData, ADamagedDictionaryIsNamedWithItsLine) {
  const Case cases[] = {{"index.noun", "go\n", ":1: fewer than three columns"},
                        {"index.noun", "  a licence\ngo n 3 00000000\n", ":2: the number"},
                        {"index.noun", "go n 1 00009999\n", ":1: no entry at 00009999"},
                        {"index.noun", "go n 1 -0000001\n", ":1: no entry"},
                        {"index.verb", "go v 1 00000001\n", ":1: no entry"},
                        {"verb.exc", "went\n", ":1: fewer than two columns"},
                        {"cntlist.rev", "go%2:1:: 1\n", ":1: not \"lemma"},
                        {"cntlist.rev", "go% 1 1\n", ":1: not \"lemma"},
                        {"cntlist.rev", "go%2:1:: 1 1000000000000\n", ":1: not a part"}};
  for (const auto& [name, text, error] : cases) {
    const SourceFolder folder;
    SmallWordNet source;
    source.add("verb", "go", {"move"});
    source.write(folder);
    const auto file = folder.write(name, text);
    EXPECT_TRUE(sourceError([&] { WordNet{folder.path()}; }).starts_with(file.string() + error))
        << name << ' ' << text;
  }
}

}  // namespace
}  // namespace quorvane::word_data
