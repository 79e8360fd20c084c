// Corrections as a person gets them: passages, keyboards, and what may be missing.

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>

#include "tests/support/DesktopStage.h"
#include "tests/support/RunningProgram.h"

namespace quorvane::tests {
namespace {

class Typing : public testing::Test {
 protected:
  std::string run(const std::vector<std::string>& arguments, const std::string& input = {},
                  const std::vector<std::string>& variables = {}) {
    RunningProgram program(folder, {arguments, input, variables});
    EXPECT_EQ(program.wait(), 0) << program.errors();
    errors = program.errors();
    return program.output();
  }

  std::string typed(const std::string& text, const std::string& meant,
                    const std::vector<std::string>& variables = {}) {
    return typedUntilRight(folder, {{"type"}, text, variables}, meant);
  }

  OwnFolder folder;
  std::string errors;
};

TEST_F(Typing, WhatShowsBesideAnotherWordHasASwitchEach) {
  struct Row {
    std::string name, typed, meant;
  };
  for (const Row& row : {
           Row{"small-i", "so i said i think. for i in i = 0 ",
               "so I said I think. for i in i = 0 "},
           Row{"could-of",
               "it could of been, of course. he should of. he could of course, might of "
               "kings ",
               "it could have been, of course. he should have. he could of course, might of "
               "kings "},
           Row{"article", "a apple, a user. A hour. a and an lock, plan A always ",
               "an apple, a user. An hour. a and an lock, plan A always "},
           Row{"words", "i'm teh fs-util.c, util de nacional ",
               "I'm the fs-util.c, util de nacional "},
       }) {
    EXPECT_EQ(typed(row.typed, row.meant), row.meant);
    run({"corrections", "off", row.name});
    EXPECT_NE(run({"type"}, row.typed), row.meant) << row.name;
    run({"corrections", "on", row.name});
  }
  const std::string back(8, '\b');
  EXPECT_EQ(run({"type"}, "it must of been " + back + "\b\bof been "), "it must of been ");
  EXPECT_EQ(run({"corrections", "list"}), "must of been to must have been, taken back once\n");
}

TEST_F(Typing, NeighboursAreThoseOfTheLayout) {
  struct Row {
    std::string layout, typed, meant;
  };
  for (const Row& row :
       {Row{"us(dvorak)", "the schoor ", "the school "}, Row{"de", "the razher ", "the rather "},
        Row{"fr", "the realmy ", "the really "}}) {
    EXPECT_EQ(run({"type"}, row.typed, {"QUORVANE_LAYOUT=us"}), row.typed);
    EXPECT_EQ(typed(row.typed, row.meant, {"QUORVANE_LAYOUT=" + row.layout}), row.meant);
  }
}

/// A stand-in of its own beside each text.
class Missing : public Typing {
 protected:
  std::string typeBeside(std::vector<std::string> checker, const std::string& text) {
    checker.insert(checker.begin(), "checker");
    RunningProgram standIn(folder, {std::move(checker), "", variables});
    EXPECT_TRUE(eventually([&] { return announcementsIn(runtime) == 1; })) << standIn.errors();
    const std::string typed =
        run({"type", "--no-checker"}, text, {variables.begin(), variables.begin() + 2});
    standIn.signal(SIGTERM);
    EXPECT_EQ(standIn.wait(), 0);
    errors = standIn.errors();
    return typed;
  }
  /// Word data that is read at once.
  void makeWords() {
    std::filesystem::create_directory(folder.path() / "data");
    std::ofstream json(folder.path() / "data" / "frequency_and_ipa.json");
    json << R"({"receive":{"frequency":90000})";
    for (int i = 0; i < 26 * 26 * 26; ++i) {
      const auto letter = [i](int power) { return static_cast<char>('a' + i / power % 26); };
      json << ",\"zz" << letter(676) << letter(26) << letter(1) << "zzzz\":{}";
    }
    json << '}';
  }

  std::filesystem::path runtime = folder.path() / "r";
  std::vector<std::string> variables{"QUORVANE_RUNTIME_DIR=" + runtime.string(),
                                     "QUORVANE_KEY_OFFSET=" + std::to_string(ownKeyOffset()),
                                     "QUORVANE_BUNDLE_DIR=" + (folder.path() / "data").string()};
};

TEST_F(Missing, WhatItIsIsSaidAndTypingGoesOn) {
  EXPECT_EQ(typeBeside({"--dictionary", "xx_YY"}, "teh "), "teh ");
  EXPECT_NE(errors.find("no dictionary for xx_YY"), std::string::npos) << errors;
  EXPECT_EQ(typeBeside({}, "recieve "), "recieve ");
  EXPECT_NE(errors.find("no word data"), std::string::npos) << errors;
  makeWords();
  EXPECT_EQ(typeBeside({}, "recieve "), "receive ");
  const auto index = folder.path() / "cache" / "quorvane" / "corrections.snapshot";
  std::fstream file(index, std::ios::binary | std::ios::in | std::ios::out);
  constexpr std::size_t kBody = 1U << 15;
  for (std::size_t at = kBody; at < std::filesystem::file_size(index); at += 1U << 10) {
    file.seekp(static_cast<std::streamoff>(at)).put('!');
  }
  file.close();
  EXPECT_EQ(typeBeside({}, "recieve "), "receive ") << "damaged";
  std::filesystem::remove(index);
  std::filesystem::create_directory(index);
  EXPECT_EQ(typeBeside({}, "recieve "), "receive ");
  EXPECT_NE(errors.find("can't be written to " + index.parent_path().string()), std::string::npos)
      << errors;
}

}  // namespace
}  // namespace quorvane::tests
