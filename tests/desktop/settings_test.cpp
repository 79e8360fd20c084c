// The user's settings as a person changes them, and what `type` makes of them.

#include <gtest/gtest.h>

#include <fstream>

#include "tests/support/RunningProgram.h"
#include "tools/applications/ApplicationFolder.h"

namespace quorvane::tests {
namespace {

struct Settings : testing::Test {
  struct Ran {
    int code;
    std::string said;
  };
  Ran run(const std::vector<std::string>& arguments, const std::string& input = {}) {
    RunningProgram program(folder, {.arguments = arguments, .input = input});
    const int code = program.wait();
    return {code, program.output() + program.errors()};
  }
  /// `settings` with these words, which must succeed.
  std::string settings(std::vector<std::string> words) {
    words.insert(words.begin(), "settings");
    const Ran ran = run(words);
    EXPECT_EQ(ran.code, 0) << ran.said;
    return ran.said;
  }

  OwnFolder folder;
  const std::filesystem::path kept = folder.path() / ".local/share/Quorvane";
};

TEST_F(Settings, AreChangedListedAndObeyed) {
  EXPECT_EQ(settings({"set", "completion.space", "on"}), "completion.space is now on\n");
  settings({"switches", "type", "-checking", "-spelling", "-grammar"});
  settings({"switches", "com.example.letters", "+spelling"});
  EXPECT_EQ(settings({"shortcut", "CkSp", "cmd+shift+s"}),
            "CkSp: cmd+control+option+s is now cmd+shift+s\n");
  const std::string list = settings({"list"});
  for (const std::string_view line :
       {"\n  CkSp  cmd+shift+s  check spelling\n",
        "\n  type: corrections, abbreviations, windows, ",
        "\n  com.example.letters: spelling, windows, sound (1802)\n", "completion.space: on\n"}) {
    EXPECT_NE(list.find(line), std::string::npos) << list;
  }
  EXPECT_NE(settings({"list", "--json"}).find(R"("completion.space": true)"), std::string::npos);
  EXPECT_EQ(run({"type"}, "teh ").said, "teh ");
  EXPECT_EQ(run({"type", "--switches", "11833"}, "teh ").said, "the ") << "for this run";
  EXPECT_EQ(settings({"list"}), list);
  settings({"reset", "type"});
  EXPECT_EQ(run({"type"}, "teh ").said, "the ");
}

TEST_F(Settings, AnUnknownWordGetsTheKnownOnesAndChangesNothing) {
  settings({"set", "pencil", "off"});
  const std::string before = settings({"list"});
  for (const auto& [words, known] : std::vector<std::pair<std::vector<std::string>, std::string>>{
           {{"set", "completion.spaces", "on"}, "completion.shift-toggle"},
           {{"switches", "desk", "+speling"}, "suggest-spelling"},
           {{"switches", "desk", "spelling"}, "suggest-spelling"},
           {{"shortcut", "Cksp", "cmd+s"}, "CkAl"},
           {{"shortcut", "CkSp", "super+s"}, "option"},
           {{"shortcut", "CkSp", "cmd+up"}, "f1 to f15"},
           {{"shortcut", "CkSp", "shift+s"}, "needs cmd"},
           {{"shortcut", "Tsia", "cmd+s"}, "CkAl"},
           {{"shortcut", "CkSp", "cmd+control+option+a"}, "CkAl"}}) {
    std::vector<std::string> arguments{"settings"};
    arguments.insert(arguments.end(), words.begin(), words.end());
    const Ran ran = run(arguments);
    EXPECT_EQ(ran.code, 2);
    EXPECT_NE(ran.said.find(known), std::string::npos) << ran.said;
  }
  EXPECT_EQ(settings({"list"}), before);
}

TEST_F(Settings, ADamagedFileIsKeptAside) {
  const std::string damage(300, 'x');
  std::filesystem::create_directories(kept);
  for (const std::string_view aside : {".damaged", ".damaged-2"}) {
    std::ofstream(kept / "._Quorvane Parameters") << damage;
    const Ran typed = run({"type"}, "teh ");
    EXPECT_NE(typed.said.find("damaged"), std::string::npos) << typed.said;
    EXPECT_EQ(typed.said.substr(0, 4), "the ");
    EXPECT_EQ(contentOf(kept / ("._Quorvane Parameters" + std::string(aside))), damage);
  }
  EXPECT_NE(settings({"list"}).find("CkAl  cmd+control+option+a"), std::string::npos);
  std::filesystem::remove(kept / "._Quorvane Parameters");
  std::filesystem::create_directory(kept / "._Quorvane Parameters");
  EXPECT_EQ(run({"type"}, "teh ").said.substr(0, 4), "the ");
}

TEST_F(Settings, TheMainApplicationIsOneThatCanRunOrNone) {
  const std::string chosen = applications::mainApplicationIn(folder.path() / "apps");
  EXPECT_EQ(run({"settings", "main-application", chosen}).code, 2);
  applications::putStandIn(folder.path() / "apps");
  for (const std::string& word : {chosen, std::string("none")}) {
    settings({"main-application", word});
    EXPECT_EQ(settings({"main-application"}).find(chosen) == std::string::npos, word == "none");
  }
}

TEST_F(Settings, AreInTheFileThatTheInputMethodFinds) {
  settings({"set", "pencil", "on"});
  std::filesystem::remove(kept / "Quorvane Parameters");
  EXPECT_EQ(run({"type"}, "teh ").said, "the ") << "it is there again";
  for (const std::string start : {"", "._"}) {
    std::filesystem::rename(kept / (start + "Quorvane Parameters"), kept / (start + "A file"));
  }
  settings({"switches", "type", "-checking"});
  EXPECT_EQ(run({"type"}, "teh ").said, "teh ");
  EXPECT_FALSE(std::filesystem::exists(kept / "Quorvane Parameters"));
}

}  // namespace
}  // namespace quorvane::tests
