// The decision about a word, over small lists of words, and what it is made of.

#include <gtest/gtest.h>

#include <random>

#include "hosts/keyboard/StandardLayouts.h"
#include "tools/corrections/Decision.h"
#include "tools/corrections/NewWordIndex.h"
#include "tools/corrections/Tables.h"

namespace quorvane::corrections {
namespace {

class Words {
 public:
  explicit Words(const std::vector<std::pair<std::string, int>>& words) {
    for (const auto& [word, frequency] : words) {
      table_.words.add(word);
      table_.frequencies.push_back(frequency);
    }
  }
  [[nodiscard]] std::unique_ptr<FileData> file() const {
    const NewWordIndex index(table_);
    return NewSnapshot(kWordIndex, "test", index.sections()).joined();
  }
  [[nodiscard]] WordIndex index() const { return {file(), "test"}; }

 private:
  FrequencyTable table_;
};

EditCost costOn(const keyboard::LayoutData& layout) {
  return {parseEditWeights(kEditWeightsTable).value(), KeyNeighbours(*layout)};
}

std::string randomWord(std::mt19937& random, std::size_t longest) {
  std::string word(1 + random() % longest, 'a');
  for (char& c : word) c = static_cast<char>('a' + random() % 4);
  return word;
}

bool isWithin(std::size_t slips, std::string_view a, std::string_view b) {
  if (a.empty() || b.empty()) return a.size() + b.size() <= slips;
  if (a[0] == b[0] && isWithin(slips, a.substr(1), b.substr(1))) return true;
  if (slips-- == 0) return false;
  const bool crossed = a.size() > 1 && b.size() > 1 && a[0] == b[1] && a[1] == b[0];
  return isWithin(slips, a.substr(1), b.substr(1)) || isWithin(slips, a.substr(1), b) ||
         isWithin(slips, a, b.substr(1)) || (crossed && isWithin(slips, a.substr(2), b.substr(2)));
}

TEST(CorrectionsIndex, FindsAllWithinReachAndNothingElse) {
  std::mt19937 random(20);
  std::vector<std::pair<std::string, int>> list;
  for (int i = 0; i < 800; ++i) list.emplace_back(randomWord(random, 11), 100);
  std::ranges::sort(list);
  list.erase(std::ranges::unique(list).begin(), list.end());
  const WordIndex index = Words(list).index();
  for (int i = 0; i < 100; ++i) {
    const std::string typed = randomWord(random, 12);
    std::vector<std::string> found;
    for (const auto& entry : index.near(typed)) found.emplace_back(entry.word);
    std::ranges::sort(found);
    std::vector<std::string> expected;
    for (const auto& [word, frequency] : list) {
      if (word != typed && isWithin(mostSlipsIn(typed), word, typed)) expected.push_back(word);
    }
    EXPECT_EQ(found, expected) << typed;
  }
}

TEST(CorrectionsIndex, DamageIsNoticedBeforeItIsUsed) {
  const auto file = Words({{"receive", 9000}, {"relieve", 900}}).file();
  std::mt19937 random(21);
  for (int i = 0; i < 200; ++i) {
    struct Damaged : FileData {
      std::vector<std::uint8_t> content;
      [[nodiscard]] std::span<const std::uint8_t> bytes() const override { return content; }
    };
    auto damaged = std::make_unique<Damaged>();
    damaged->content.assign(file->bytes().begin(), file->bytes().end());
    damaged->content[random() % damaged->content.size()] ^= 0x41;
    try {
      const WordIndex index(std::move(damaged), "test");
      for (const auto& entry : index.near("recieve")) EXPECT_TRUE(isWord(entry.word));
    } catch (const DamagedSnapshot&) {
    }
  }
}

TEST(CorrectionsWeights, OnlyWholeTablesAreRead) {
  const std::string whole(kEditWeightsTable);
  const auto weights = parseEditWeights(whole);
  ASSERT_TRUE(weights);
  for (const std::string& broken : std::vector<std::string>{
           "", whole.substr(0, whole.size() / 2), whole + "missing a\n", whole + "missing a b -1\n",
           whole + "missing ab c 1\n", whole + "strange a b 1\n", whole + "near what 1\n"}) {
    EXPECT_FALSE(parseEditWeights(broken)) << broken.size();
  }
}

TEST(CorrectionsDecision, SureOrSilent) {
  const WordIndex index = Words({{"receive", 90'000},
                                 {"relieve", 3'000},
                                 {"occur", 50'000},
                                 {"occurred", 50'000},
                                 {"the", 40'000'000},
                                 {"hidden", 9'000},
                                 {"bidden", 900},
                                 {"harris", 9'000},
                                 {"don't", 150'000},
                                 {"wich", 118},
                                 {"which", 3'000'000},
                                 {"lock", 20'000},
                                 {"file", 60'000},
                                 {"clock", 30'000},
                                 {"profile", 40'000}})
                              .index();
  const EditCost cost = costOn(keyboard::usLayout());
  const Decision decision(index, cost);
  const Accepts accepts = [](const std::string& word) {
    const bool unknown = word == "bidden" || word == "Bidden";
    return word == "Harris" || (word != "harris" && word != "wich" && word != "Wich" && !unknown);
  };
  struct Row {
    std::string typed;
    Writing writing;
    Rule rule;
    std::string best;
  };
  std::mt19937 random(22);
  for (int i = 0; i < 3000; ++i) {
    std::string any(random() % 30, ' ');
    for (char& c : any) c = static_cast<char>(i % 2 == 0 ? random() : 'a' + random() % 26);
    EXPECT_NE(decision.judge(any, Writing::Small, accepts).rule, Rule::Sure) << any;
  }
  for (const Row& row : {
           Row{"recieve", Writing::Small, Rule::Sure, "receive"},
           Row{"recieve", Writing::Capital, Rule::Sure, "receive"},
           Row{"receive", Writing::Small, Rule::Known, ""},
           Row{"receive's", Writing::Small, Rule::Known, ""},
           Row{"occured", Writing::Small, Rule::Sure, "occurred"},
           Row{"occurs", Writing::Small, Rule::BelowFloor, "occur"},
           Row{"lockfile", Writing::Small, Rule::Nothing, ""},
           Row{"profiler", Writing::Small, Rule::Itself, "profile"},
           Row{"biddden", Writing::Small, Rule::Itself, "bidden"},
           Row{"hiden", Writing::Small, Rule::Sure, "hidden"},
           Row{"hiden", Writing::Joined, Rule::BelowFloor, "hidden"},
           Row{"harrris", Writing::Small, Rule::Nothing, ""},
           Row{"dont", Writing::Small, Rule::Sure, "don't"},
           Row{"wich", Writing::Small, Rule::Sure, "which"},
           Row{"teh", Writing::Small, Rule::Sure, "the"},
           Row{"te", Writing::Small, Rule::BelowFloor, "the"},
           Row{"qqqqq", Writing::Small, Rule::Nothing, ""},
           Row{"caf\xC3\xA9", Writing::Small, Rule::NotAWord, ""},
           Row{std::string(25, 'a'), Writing::Small, Rule::NotAWord, ""},
       }) {
    const Judgement judgement = decision.judge(row.typed, row.writing, accepts);
    EXPECT_EQ(judgement.rule, row.rule) << row.typed;
    EXPECT_EQ(judgement.ranked.empty() ? "" : judgement.ranked.front().word, row.best) << row.typed;
  }
}

}  // namespace
}  // namespace quorvane::corrections
