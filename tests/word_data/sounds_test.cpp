#include <sstream>

#include "hosts/script/DuktapeScriptHost.h"
#include "tests/word_data/SourceFolder.h"
#include "tools/word_data/Phonetic.h"
#include "tools/word_data/Pronunciation.h"

namespace quorvane::word_data {
namespace {

TEST(WordData, PhonesBecomeMarkedSyllables) {
  const std::pair<const char*, const char*> cases[] = {{"R AH0 S IY1 V", "rəˈsiːv"},
                                                       {"AH0 K AA1 M AH0 D EY2 T", "əˈkɑːməˌdeɪt"},
                                                       {"B Y UW1 T AH0 F AH0 L", "ˈbjuːtəfəl"},
                                                       {"W AO1 T ER0", "ˈwɔːtər"},
                                                       {"S IH0 NG IH1 NG", "sɪŋˈɪŋ"},
                                                       {"T S EH1 T S IY0", "ˈtsɛtsi"},
                                                       {"EH0 K S T R IY1 M", "ɛkˈstriːm"},
                                                       {"AE0 T L AE1 S", "ætˈlæs"},
                                                       {"HH ER1 D", "hɜːrd"},
                                                       {"AY1 V IY1", "ˌaɪˈviː"},
                                                       {"HH M", "hm"}};
  for (const auto& [phones, ipa] : cases) EXPECT_EQ(ipaOfPhones(phones), ipa);
  for (const auto* phones : {"AH", "AH3", "QQ1", "R AH0 ?", "1"})
    EXPECT_FALSE(ipaOfPhones(phones)) << phones;
}

TEST(WordData, TheFirstPronunciationCountsAndOursBeforeIt) {
  const SourceFolder packages;
  Tables tables;
  tables.pronunciations["dr"] = "ˈdɑːktər";
  const std::string head = "export const dictionary = {\n  \"dr\": \"D R AY1 V\",\n";
  packages.write("cmu-pronouncing-dictionary/index.js",
                 head + "  abbe: \"AE1 B IY0 # remark\",\n  \"abbe(2)\": \"AE0 B EY1\"\n}\n");
  const Pronunciations known(packages.path(), tables);
  EXPECT_EQ(known.ipa("abbe"), "ˈæbi");
  EXPECT_EQ(known.ipa("dr"), "ˈdɑːktər");
  EXPECT_EQ(known.ipa("unknown"), "");
  const auto file =
      packages.write("cmu-pronouncing-dictionary/index.js", head + "  \"ab\": \"AE1 BB\",\n}\n");
  EXPECT_TRUE(sourceError([&] {
                Pronunciations(packages.path(), tables);
              }).starts_with(file.string() + ":3: unknown phone"));
}

// Worked out by hand from the published steps.
TEST(WordData, PhonexCodesFollowThePublishedSteps) {
  DuktapeScriptHost scripts;
  Phonex phonex(scripts, TextFile(QUORVANE_SOURCE_DIR "/data/phonex.js").text());
  std::istringstream cases(
      "knuth N300 wright R230 philip F410 heinrich A562 sherman S500 lloyd L430 gauss G000 "
      "zotteldecke S320 hilbert A130 sandemann S500 hornblower A514 euler A460 recieve R210 "
      "receive R210 DEFINATELY D153 definitely D153 fitch F200 ely A400 yes A000 ingram A565");
  for (std::string word, code; cases >> word >> code;) EXPECT_EQ(phonex.code(word), code) << word;
  EXPECT_EQ(phonex.code("x-1 y\u00e9"), "X000");
  for (const char* none : {"", "sss", "h", "123"}) EXPECT_EQ(phonex.code(none), "") << none;
  EXPECT_EQ(phonex.code(std::string(100'000, 'a') + "b"), "A000") << "200 characters count";
}

TEST(WordData, WordsOfACodeStandByFrequency) {
  DuktapeScriptHost scripts;
  Phonex first(scripts, "function phonex(w) { return w === 'none' ? '' : w.charAt(0); }");
  const Word words[] = {{"ab", 1}, {"ac", 7}, {"ad", 7}, {"b", 2}, {"none", 9}};
  EXPECT_EQ(groupByCode(first, words), (CodeGroups{{"a", {"ac", "ad", "ab"}}, {"b", {"b"}}}));
  for (const auto* script : {"", "var phonex = 1;", "function phonex(w) { throw w; }", "var ("})
    EXPECT_NE(sourceError([&] { Phonex(scripts, script); }), "") << script;
}

}  // namespace
}  // namespace quorvane::word_data
