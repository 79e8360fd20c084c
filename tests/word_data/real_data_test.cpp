// The word data that scripts/setup made.

#include <gtest/gtest.h>
#include <simdjson.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace quorvane::word_data {
namespace {

const std::string Folder = QUORVANE_SOURCE_DIR "/build/data/";

class RealData : public testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(Folder)) GTEST_SKIP() << "no word data has been made";
    table = parser.load(Folder + "frequency_and_ipa.json");
    if (ipa("receive").empty()) GTEST_SKIP() << "made without the npm packages";
  }

  std::string ipa(std::string_view word) {
    return std::string(std::string_view(table[word]["ipa"]));
  }

  // The commonest words with a prefix, as a list of candidates would have them.
  std::string top(std::string_view prefix, std::size_t count) {
    std::vector<std::pair<std::int64_t, std::string_view>> words;
    for (const auto member : simdjson::dom::object(table))
      if (member.key.starts_with(prefix))
        words.emplace_back(-std::int64_t(member.value["frequency"]), member.key);
    std::ranges::sort(words);
    std::string text;
    for (std::size_t i = 0; i < std::min(count, words.size()); ++i)
      text += (i > 0 ? " " : "") + std::string(words[i].second);
    return text;
  }

  simdjson::dom::parser parser;
  simdjson::dom::element table;
};

TEST_F(RealData, CommonWordsStandFirst) {
  const std::map<std::string, std::string> tops{
      {"t", "the to that this they there their time them think"},
      {"rec", "received record recent records recently receive recognize recognized recorded"},
      {"beau", "beautiful beauty beautifully beauties beau beaucoup beaumont beaux beauteous"},
      {"do", "do down does doing done door doctor dog"},
      {"s", "so she see some should said"},
      {"jan", "january jane janet"},
      {"wed", "wedding wednesday"}};
  for (const auto& [prefix, words] : tops)
    EXPECT_EQ(top(prefix, static_cast<std::size_t>(std::ranges::count(words, ' ')) + 1), words);
}

TEST_F(RealData, HasWordsAndNoMisspellings) {
  const auto words = simdjson::dom::object(table);
  EXPECT_EQ(
      std::count_if(words.begin(), words.end(),
                    [](const auto& member) { return std::int64_t(member.value["frequency"]) > 0; }),
      227800);
  std::istringstream present(
      "the because receive accommodate beautiful went tv cafe colour "
      "smartphone organise monday london uk usa pc cd hiv");
  std::istringstream absent(
      "thier recieve teh definately alot occured seperate accomodate untill "
      "beleive");
  for (std::string word; present >> word;)
    EXPECT_EQ(table[word].error(), simdjson::SUCCESS) << word;
  for (std::string word; absent >> word;) EXPECT_NE(table[word].error(), simdjson::SUCCESS) << word;
  EXPECT_EQ(ipa("accommodate"), "əˈkɑːməˌdeɪt");
  EXPECT_EQ(ipa("dr"), "ˈdɑːktər");
  // Our own, where the first sense of the source is an odd one.
  for (const auto& [word, gloss] :
       std::map<std::string_view, std::string_view>{{"now", "adv. at this moment"},
                                                    {"just", "adv. only"},
                                                    {"paris", "the capital of France"}})
    EXPECT_EQ(std::string_view(table[word]["translation"].at(0)), gloss);
}

}  // namespace
}  // namespace quorvane::word_data
