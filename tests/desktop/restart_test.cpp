// The main application started twice at once; and killed and started again while somebody types:
// nothing that was typed is lost, doubled or out of order, and the fixes stop and come back with
// it.

#include <gtest/gtest.h>
#include <sys/shm.h>

#include <array>
#include <csignal>
#include <fstream>
#include <memory>
#include <sstream>

#include "hosts/marisa/SavedWordList.h"
#include "tests/support/DesktopStage.h"

namespace quorvane::tests {
namespace {

struct Word {
  std::string typed;
  std::string corrected;
  std::size_t firstKey = 0;
  std::size_t lastKey = 0;  ///< the space that ends it
};

/// Sentences of ten words: a text without an end is dropped by and by, and the word then at hand
/// stays as typed.
std::vector<Word> words(int count) {
  const std::vector<Word> two{{"teh", "the"}, {"recieve", "receive"}};
  std::vector<Word> result;
  std::size_t key = 0;
  for (int i = 0; i < count; ++i) {
    Word word = two[static_cast<std::size_t>(i) % two.size()];
    if (i % 10 == 9) word = {word.typed + '.', word.corrected + '.'};
    word.firstKey = key;
    word.lastKey = key + word.typed.size();
    key = word.lastKey + 1;
    result.push_back(word);
  }
  return result;
}

std::string typedText(const std::vector<Word>& words) {
  std::string result;
  for (const Word& word : words) result += word.typed + ' ';
  return result;
}

/// Counted in keys.
struct Absence {
  std::size_t killed = 0;     ///< the last key before
  std::size_t gone = 0;       ///< the first after it surely was
  std::size_t restarted = 0;  ///< the last before it was started again
  std::size_t back = 0;       ///< the first after it surely was
};

class Restart : public testing::Test {
 protected:
  ~Restart() override {
    checker_.reset();
    for (const std::uint32_t key : {880U, 893U, 896U, 897U, 899U}) {
      ::shmctl(::shmget(static_cast<key_t>(key + keyOffset_), 0, 0), IPC_RMID, nullptr);
    }
  }

  [[nodiscard]] Start checker() const {
    return {.arguments = {"checker"}, .variables = variables_};
  }
  void startChecker() {
    checker_ = std::make_unique<RunningProgram>(folder_, checker());
    const auto file = runtime_ / (std::to_string(checker_->pid()) + ".process");
    ASSERT_TRUE(eventually([&] { return std::filesystem::exists(file); })) << checker_->errors();
  }

  /// How many keys the trace of `type` tells of.
  std::size_t keys() const {
    const std::string trace = type_->errors();
    std::size_t count = 0;
    for (std::size_t at = 0; (at = trace.find("key \"", at)) != std::string::npos; ++at) ++count;
    return count;
  }
  void awaitKey(std::size_t number) {
    ASSERT_TRUE(eventually([&] { return keys() >= number; })) << type_->errors();
  }

  Absence killAndRestart() {
    constexpr std::size_t kMargin = 5;
    Absence absence;
    absence.killed = keys();
    checker_->signal(SIGKILL);
    EXPECT_EQ(checker_->wait(), 128 + SIGKILL);
    absence.gone = keys() + kMargin;
    awaitKey(absence.gone + 30);
    absence.restarted = keys();
    startChecker();
    absence.back = keys() + kMargin;
    return absence;
  }

  OwnFolder folder_;
  std::filesystem::path runtime_ = folder_.path() / "r";
  std::uint32_t keyOffset_ = ownKeyOffset();
  std::vector<std::string> variables_{"QUORVANE_RUNTIME_DIR=" + runtime_.string(),
                                      "QUORVANE_KEY_OFFSET=" + std::to_string(keyOffset_)};
  std::unique_ptr<RunningProgram> checker_;
  std::unique_ptr<RunningProgram> type_;
};

bool within(const Word& word, std::size_t from, std::size_t to) {
  return word.firstKey >= from && word.lastKey <= to;
}

TEST_F(Restart, ThreeTimesWhileTyping) {
  const std::vector<Word> text = words(90);
  startChecker();
  type_ = std::make_unique<RunningProgram>(
      folder_, Start{.arguments = {"type", "--no-checker", "--trace", "--delay", "20"},
                     .input = typedText(text),
                     .variables = variables_});
  std::vector<Absence> absences{{}};  // from the start it is there
  for (int i = 0; i < 3; ++i) {
    awaitKey(absences.back().back + 60);
    absences.push_back(killAndRestart());
  }
  EXPECT_EQ(type_->wait(), 0);
  absences.push_back({.killed = typedText(text).size()});

  std::istringstream document(type_->output());
  std::string wellFormed;
  int typedWhileAway = 0;
  std::vector<int> corrected(absences.size() - 1);
  for (const Word& word : text) {
    std::string found;
    document >> found;
    ASSERT_TRUE(found == word.typed || found == word.corrected) << found;
    wellFormed += found + ' ';
    for (std::size_t i = 0; i < corrected.size(); ++i) {
      if (within(word, absences[i].back, absences[i + 1].killed)) {
        corrected[i] += found == word.corrected ? 1 : 0;
      } else if (within(word, absences[i].gone, absences[i].restarted)) {
        EXPECT_EQ(found, word.typed) << "at key " << word.firstKey;
        ++typedWhileAway;
      }
    }
  }
  EXPECT_EQ(type_->output(), wellFormed);
  EXPECT_GE(typedWhileAway, 9);
  for (const int count : corrected) EXPECT_GE(count, 2) << "on a busy machine some come too late";
}

TEST_F(Restart, InTheMiddleOfCompletedWords) {
  const std::string text = typedText(words(40));
  startChecker();
  type_ = std::make_unique<RunningProgram>(
      folder_, Start{.arguments = {"type", "--no-checker", "--trace", "--delay", "10", "--switches",
                                   "11873"},
                     .input = text,
                     .variables = variables_});
  for (int i = 0; i < 2; ++i) {
    awaitKey(keys() + 20);
    killAndRestart();
  }
  EXPECT_EQ(type_->wait(), 0);
  EXPECT_EQ(type_->output(), text);
}

bool wasRefused(const RunningProgram& program) {
  return program.errors().find("running already") != std::string::npos;
}

TEST_F(Restart, OfTwoAtOnceOneWorksAndTheOtherLeavesItsSegmentsAlone) {
  for (int round = 0; round < 3; ++round) {
    RunningProgram one(folder_, checker());
    RunningProgram two(folder_, checker());
    ASSERT_TRUE(eventually([&] { return wasRefused(one) || wasRefused(two); }));
    ASSERT_TRUE(eventually([&] { return announcementsIn(runtime_) == 1; }));
    RunningProgram type(
        folder_,
        {.arguments = {"type", "--no-checker"}, .input = "teh end ", .variables = variables_});
    EXPECT_EQ(type.wait(), 0);
    EXPECT_EQ(type.output(), "the end ");
    RunningProgram& loser = wasRefused(one) ? one : two;
    RunningProgram& winner = &loser == &one ? two : one;
    EXPECT_EQ(loser.wait(), 1);
    winner.signal(SIGTERM);
    EXPECT_EQ(winner.wait(), 0);
  }
}

TEST_F(Restart, OfTwoInputMethodsTheSecondPassesEveryKeyUntilTheFirstIsKilled) {
  std::ofstream(folder_.path() / "google_227800_words.bin")
      << savedWordList(std::array<std::string_view, 1>{"word"});
  startChecker();  // which needs all the words
  variables_.push_back("QUORVANE_BUNDLE_DIR=" + folder_.path().string());
  const auto typing = [this](const char* text, const char* delay) {
    return std::make_unique<RunningProgram>(
        folder_, Start{.arguments = {"type", "--no-checker", "--delay", delay},
                       .input = text,
                       .variables = variables_});
  };
  const auto first = typing("teh first", "60000");
  ASSERT_TRUE(eventually([&] { return announcementsIn(runtime_) == 2; })) << first->errors();
  const auto second = typing("teh second ", "0");
  EXPECT_EQ(second->wait(), 0);
  EXPECT_EQ(second->output(), "teh second ");
  EXPECT_NE(second->errors().find("another input method"), std::string::npos) << second->errors();
  EXPECT_EQ(announcementsIn(runtime_), 2U) << "the second is none";
  first->signal(SIGKILL);
  first->wait();
  const auto third = typing("teh third ", "0");
  EXPECT_EQ(third->wait(), 0);
  EXPECT_EQ(third->output(), "the third ");
}

}  // namespace
}  // namespace quorvane::tests
