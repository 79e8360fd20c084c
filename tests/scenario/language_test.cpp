// The scenario language itself: it must be able to fail, and be described.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "tools/scenario/Scenario.h"
#include "tools/scenario/Statement.h"

namespace quorvane::scenario {
namespace {

struct Replayed {
  int result;
  std::string output;
};

Replayed replay(std::string_view text) {
  std::ostringstream out;
  const int result = replayText(text, "file", out);
  return {result, out.str()};
}

TEST(ScenarioLanguage, EveryStatementIsDescribedAndEveryDescriptionIsAStatement) {
  std::ifstream file(std::string(QUORVANE_SOURCE_DIR) + "/docs/scenarios.md");
  const std::vector<std::string> records{"platform call", "client call", "posted event",
                                         "sent message",  "log line",    "console line"};
  std::vector<std::string> described;
  bool inTables = false;
  for (std::string line; std::getline(file, line);) {
    inTables = inTables || line == "## Setting the stage";
    const std::size_t end = line.find("` |");
    if (!inTables || !line.starts_with("| `") || end == std::string::npos) continue;
    described.push_back(line.substr(3, end - 3));
    if (std::count(records.begin(), records.end(), described.back()) != 0) described.pop_back();
  }
  std::vector<std::string> known;
  for (const Pattern* pattern : allPatterns()) known.emplace_back(pattern->words);
  std::sort(described.begin(), described.end());
  std::sort(known.begin(), known.end());
  EXPECT_EQ(described, known);
}

TEST(ScenarioLanguage, ADifferenceNamesItsLineAndBothSides) {
  const Replayed replayed = replay("usual stage\n\ntype \"ab\"\nexpect session \"a|b\"\n");
  EXPECT_EQ(replayed.result, kDiffers);
  EXPECT_EQ(replayed.output, "file:4: expect session \"a|b\"\n  expected: a|b\n  found:    ab|\n");
}

// Each of these lines is wrong about a stage where "ab " has been typed and scanned.
TEST(ScenarioLanguage, EachKindOfExpectationCanFail) {
  for (const char* line :
       {"expect document \"ab |c\"",
        "expect document \"ab\"",
        "expect consumed",
        "expect session \"ab\"",
        "expect session ends \"b|\"",
        "expect no session is active",
        "expect 2 sessions",
        "expect session byte 0 is 98",
        "expect session of note is active",
        "expect session length of note is 1",
        "expect field 51 is 7",
        "expect field 51 has bit 0",
        "expect field 51 lacks bit 3",
        "expect field 34 names the session of note",
        "expect status 1 is 0",
        "expect entry 4 is 1",
        "expect published \"ab \" length 2 key \" \"",
        "expect published \"ab \" length 3 key \"b\"",
        "expect segment 893 at 8 to hold 61 63",
        "expect segment 893 is attached",
        "expect command 87 from 'WRTR' process 1",
        "expect client name \"x\"",
        "expect exit status 0",
        "expect main returned 1",
        "expect default \"showTranslation\" is on",
        "expect main-application in front",
        "expect 3 writing styles",
        "expect 20 to 30 ticks passed",
        "expect next client call \"insertText*\"",
        "expect client call \"insertText*\"",
        "expect no client call \"attributes*\"",
        "expect no more client calls",
        "expect 2 sent messages \"*\"",
        "expect log line \"nobody logs this\"",
        "fix 1 to \"x\": no more posted events, still running, no more console lines",
        "expect panel \"[a]\"",
        "expect annotation \"x\" at 0 0",
        "expect passed on after an error",
        "expect start failed \"*\"",
        "expect submenu \"Spelling\" holds \"x\"",
        "expect submenu \"Text Tools\" empty",
        "folder \"a\" \n the folder is dated \"2026-03-04 15:09:26\" \n"
        "expect the folder is dated \"2026-03-04 15:09:27\"",
        "folder \"a\", file \"b\" with type 1 and creator 2, switch of file \"b\" is 1 \n"
        "expect switch of file \"b\" is 0",
        "begin again, completion stage \n type \"he\": panel hidden",
        "at client call \"selectedRange\" do: start",
        "before platform call 9999 do: start",
        "begin again \n completion stage \n press key code 105 giving \"\"",
        "begin again \n data file \"google_227800_words.bin\" is missing \n start"}) {
    EXPECT_EQ(
        replay(std::string(
                   "usual stage\nscan takes 1 ticks\nfocus note\nfocus letter\ntype \"ab \"\n") +
               line)
            .result,
        kDiffers)
        << line;
  }
}

TEST(ScenarioLanguage, WhatCantBeReadOrCarriedOutIsABadStatement) {
  for (const char* line :
       {"expect happiness", "type abc", "type \"abc", "press hyper+x", "field six becomes 1",
        "type \"\\q\"", "expect session mood is 1", "application ghost quits", "nonsense fails",
        "scan takes 1 ticks and does: expect happiness", "expect next dance \"x\"",
        "expect session byte 4000 is 0", "caret rectangle 1 2 3", "completion with luck",
        "begin again, pick \"a\"", "type \"a\", type b", "type \"a\":", "type \"a\": type \"b\"",
        // Numbers and bytes that nothing has, or nobody can mean.
        "field 55 becomes 0", "field -1 becomes 0", "field 1 becomes 0x100000000",
        "field 1 becomes 0x-1", "expect field 55 is 0", "status 8 becomes 0", "expect entry 8 is 0",
        "expect field 1 lacks bit 32", "request bit 32 takes 1 ticks", "segment 881 is removed",
        "expect segment 881 is detached", "segment 893 at 5000 becomes 61",
        "segment 893 at 0 becomes 6", "segment 893 at 0 becomes 061", "message 7 bytes \"61\"",
        "segment 893 is made with 0 bytes", "writing styles 41", "clock step 0 microseconds",
        "clock step -1 microseconds", "type \"a\" 0 times", "press a 1000001 times",
        "press key code 65536 giving \"a\"", "wait -1 ticks", "wait nan seconds", "wait inf ticks",
        "scan takes -1 ticks", "expect 2 to 1 ticks passed", "select 0 to 1",
        "before platform call 0 do: start", "commit Roman byte 256 replacing 0",
        "program types 65536", "window is asked about a click at 32768 0", "type \"\\d{256}\"",
        "type \"\xC3(\"", "type \"a\"b",
        // Words that stand for nothing there.
        "press shift", "modifiers a", "default \"showTranslation\" is set onn",
        "expect default \"showtranslation\" is unset", "input source \"a\" selectible",
        "data file \"phonx.js\" is missing", "expect document lettr \"|\"",
        "expect some writing styles", "at client call \"*\" do: begin again",
        "at client call \"a\" do: start \n at client call \"a\" do: start", "system version 106",
        "completion with space", "begin again, field 1 becomes 0"}) {
    EXPECT_EQ(replay(std::string("usual stage\n") + line).result, kUnreadable) << line;
  }
  std::ostringstream out;
  EXPECT_EQ(replayFiles({"no such file"}, out), kUnreadable);
  EXPECT_EQ(out.str(), "no such file: can't be read\n");
  EXPECT_EQ(replayFiles({QUORVANE_SOURCE_DIR}, out), kUnreadable);
}

// What goes wrong inside a call of the input method is told as well.
TEST(ScenarioLanguage, AnExpectationInsideACallCanFail) {
  const Replayed replayed =
      replay("usual stage\nat client call \"*\" do: expect field 51 is 9\ntype \"a\"\n");
  EXPECT_EQ(replayed.result, kDiffers);
  EXPECT_NE(replayed.output.find("file:2: "), std::string::npos) << replayed.output;
}

}  // namespace
}  // namespace quorvane::scenario
