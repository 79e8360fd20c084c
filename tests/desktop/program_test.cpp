// The programs as a person runs them: real processes, real segments, real sockets.

#include <gtest/gtest.h>
#include <sys/shm.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <future>

#include "hosts/desktop/RuntimeFolder.h"
#include "tests/support/DesktopStage.h"
#include "tests/support/RunningProgram.h"

namespace quorvane::tests {
namespace {

constexpr std::string_view kMistakes = "I recieve teh letter, it doesn't matter. ";
constexpr std::string_view kCorrected = "I receive the letter, it doesn't matter. ";

std::size_t entriesIn(const std::filesystem::path& folder) {
  std::error_code error;
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (entry.path().filename() != ".lock") ++count;
  }
  return count;
}

/// Both processes of a `type` stand in its private folder.
bool bothAnnounced(const OwnFolder& folder, const RunningProgram& type) {
  return announcementsIn(folder.usualRuntimeFolder() / ("type-" + std::to_string(type.pid()))) == 2;
}

/// The tool record of a `type`, whose keys are offset by 32 for each process id.
bool hasSegment(pid_t typePid) { return ::shmget(0x10000000 + typePid * 32 + 880, 0, 0) >= 0; }

TEST(Program, ExitCodesAreHonest) {
  struct Case {
    Start start;
    int code;
    std::string_view output;  ///< is part of it; empty: there is none
    std::string_view errors;  ///< are part of them
  };
  const std::vector<Case> cases{
      {{.arguments = {"--help"}}, 0, "type", ""},
      {{.arguments = {"typo"}}, 2, "", "typo"},
      {{.arguments = {"checker", "--paste", "-3"}}, 2, "", "0 to 2147483647"},
      {{.arguments = {"--version"}, .output = "/dev/full"}, 1, "", "standard output"},
      {{.arguments = {"replay", "/none"}, .output = "/dev/full"}, 1, "", "standard output"},
      {{.arguments = {"desk"}}, 2, "", "must be a terminal"},
      {{.arguments = {"candidates", "a\xFF"}}, 2, "", "offset 1"},
      {{.arguments = {"candidates", "a"}, .variables = {"QUORVANE_BUNDLE_DIR=/nonexistent"}},
       1,
       "",
       "google_227800_words.bin"},
      {{.arguments = {"type", "--switches", "12g"}}, 2, "", "12g"},
      {{.arguments = {"type"}, .input = "ab\xC3("}, 2, "", "offset 2"},
      {{.arguments = {"type", "--no-checker"},
        .input = "a",
        .variables = {"QUORVANE_KEY_OFFSET=x"}},
       1,
       "",
       "QUORVANE_KEY_OFFSET"},
      {{.arguments = {"type", "--no-checker"}, .input = "a", .output = "/dev/full"},
       1,
       "",
       "standard output"},
  };
  const OwnFolder folder;
  for (const Case& one : cases) {
    SCOPED_TRACE(one.start.arguments.back());
    RunningProgram program(folder, one.start);
    EXPECT_EQ(program.wait(), one.code);
    if (one.start.output.empty()) {
      EXPECT_NE(program.output().find(one.output), std::string::npos);
      EXPECT_EQ(program.output().empty(), one.output.empty());
    }
    EXPECT_NE(program.errors().find(one.errors), std::string::npos) << program.errors();
  }
}

TEST(Type, WhyTheStandInCannotStartIsShown) {
  const OwnFolder folder;
  const std::uint32_t key = ownKeyOffset() + 880;
  const int small = ::shmget(static_cast<key_t>(key), 8, IPC_CREAT | 0600);
  RunningProgram type(folder, {.arguments = {"type"},
                               .variables = {"QUORVANE_KEY_OFFSET=" + std::to_string(key - 880)}});
  EXPECT_EQ(type.wait(), 1);
  ::shmctl(small, IPC_RMID, nullptr);
  const std::string reason = "key " + std::to_string(key) + ": Invalid argument (kernel.shmmax is ";
  EXPECT_NE(type.errors().find(reason), std::string::npos) << type.errors();
}

TEST(Program, SaysThatAnotherHoldsTheLock) {
  const OwnFolder folder;
  const desktop::Descriptor lock = desktop::RuntimeFolder(folder.usualRuntimeFolder()).lock();
  for (const char* const command : {"type", "checker"}) {
    RunningProgram program(folder, {.arguments = {command}});
    EXPECT_EQ(program.wait(), 1);
    EXPECT_NE(program.errors().find("holds .lock"), std::string::npos) << program.errors();
  }
}

TEST(Type, TraceTellsAttachPacketAndClientCallOfAFix) {
  const OwnFolder folder;
  RunningProgram type(folder, {.arguments = {"type", "--trace"}, .input = "teh "});
  EXPECT_EQ(type.wait(), 0);
  EXPECT_EQ(type.output(), "the ");
  const std::string errors = type.errors();
  const std::size_t key = errors.find("key \" \": passed on, attached 893 896 893");
  ASSERT_NE(key, std::string::npos) << errors;
  const std::size_t packet = errors.find("packet 202, 8 bytes, replace 4 by \"the \"", key);
  ASSERT_NE(packet, std::string::npos) << errors;
  EXPECT_NE(errors.find("client setMarkedText \"the \"", packet), std::string::npos) << errors;
}

TEST(Type, WhatStandsBehindACaretThatHasMovedIsLeftAlone) {
  const std::pair<std::string, std::string> cases[] = {{"I ab\x01"
                                                        "d ",
                                                        "d I ab"},
                                                       {"abd\x01\x7F\x04 ", "bd "}};
  const OwnFolder folder;
  for (const auto& [input, document] : cases) {
    RunningProgram type(folder, {.arguments = {"type"}, .input = input});
    EXPECT_EQ(type.wait(), 0);
    EXPECT_EQ(type.output(), document);
  }
}

TEST(Corrections, SureOrSilent) {
  const OwnFolder folder;
  const std::string left =
      "The quantized flyer of the licensors, says Hoare to Ayn, is his util of "
      "theatre programme. ";
  const Start type{.arguments = {"type"},
                   .input = left +
                            "We recieve teh one becuase i'm definately seperate, dont go "
                            "untill it occured to wich goverment. "};
  const std::string right = left +
                            "We receive the one because I'm definitely separate, don't go "
                            "until it occurred to which government. ";
  EXPECT_EQ(typedUntilRight(folder, type, right), right);
}

TEST(Corrections, WhatIsTakenBackTwiceIsNeverMadeAgain) {
  const OwnFolder folder;
  const auto run = [&](const std::vector<std::string>& arguments, const std::string& input) {
    RunningProgram program(folder, {.arguments = arguments, .input = input});
    EXPECT_EQ(program.wait(), 0) << program.errors();
    return program.output();
  };
  const std::string back = "teh \b\b\b\bteh teh ";
  EXPECT_EQ(run({"type"}, back), "teh teh ");
  EXPECT_EQ(run({"corrections", "list"}, ""), "teh to the, taken back once\n");
  EXPECT_EQ(run({"type"}, "teh " + back), "the teh teh ");
  EXPECT_EQ(run({"type"}, "teh recieve "), "teh receive ");
  EXPECT_EQ(run({"corrections", "clear"}, ""), "");
  EXPECT_EQ(run({"type"}, "teh "), "the ");
}

TEST(Type, SmartCharactersOnEachLayout) {
  const OwnFolder folder;
  for (const std::string layout : {"us", "us(dvorak)", "de", "fr"}) {
    SCOPED_TRACE(layout);
    RunningProgram type(folder, {.arguments = {"type", "--smart", "--trace"},
                                 .input = "it was \"fine\" -- he said. then left. ",
                                 .variables = {"QUORVANE_LAYOUT=" + layout}});
    EXPECT_EQ(type.wait(), 0);
    EXPECT_EQ(type.output(), "It was \u201Cfine\u201D \u2014 he said. Then left. ");
    const std::string errors = type.errors();
    const std::size_t typed = errors.find("key \"t\": consumed\nkey \"T\", posted: passed on");
    EXPECT_NE(typed, std::string::npos) << errors;
  }
}

TEST(Program, TheLogKeepsTypedTextPrivate) {
  const OwnFolder folder;
  const std::string text = "teh recieve ";
  RunningProgram log(folder, {.arguments = {"type", "--log"}, .input = text});
  RunningProgram open(folder, {.arguments = {"type", "--log", "--show-private"}, .input = text});
  EXPECT_EQ(log.wait(), 0);
  EXPECT_EQ(open.wait(), 0);
  for (const std::string_view word : {"recieve", "receive"}) {
    EXPECT_EQ(log.errors().find(word), std::string::npos) << log.errors();
    EXPECT_NE(open.errors().find(word), std::string::npos) << open.errors();
  }
  EXPECT_NE(log.errors().find("<private>"), std::string::npos);
}

constexpr int kMessage = 0;
class TypeEnd : public testing::TestWithParam<int> {};

TEST_P(TypeEnd, PrintsWhatWasTypedAndLeavesNothingBehind) {
  const OwnFolder folder;
  // Variables that are empty count as unset; a signal ends the delay, too.
  RunningProgram type(folder, {.arguments = {"type", "--delay", "60000", "--trace"},
                               .input = std::string(kMistakes),
                               .variables = {"QUORVANE_RUNTIME_DIR=", "QUORVANE_KEY_OFFSET="}});
  ASSERT_TRUE(eventually([&] { return type.errors().find("key \"I\"") != std::string::npos; }));
  ASSERT_TRUE(bothAnnounced(folder, type));
  ASSERT_TRUE(hasSegment(type.pid()));
  const bool message = GetParam() == kMessage;
  const auto own = folder.usualRuntimeFolder() / ("type-" + std::to_string(type.pid()));
  message ? sendToInputMethod(own, type.pid(), "IMqt"_4cc) : type.signal(GetParam());
  EXPECT_TRUE(eventually([&] { return !hasSegment(type.pid()); }));
  EXPECT_EQ(type.wait(), message ? 255 : 128 + GetParam());
  EXPECT_EQ(entriesIn(folder.usualRuntimeFolder()), 0U);
  EXPECT_EQ(type.output(), "I");
  const std::string_view reason = message ? "a message" : ::strsignal(GetParam());
  EXPECT_NE(type.errors().find(reason), std::string::npos) << type.errors();
}

INSTANTIATE_TEST_SUITE_P(All, TypeEnd, testing::Values(SIGINT, SIGTERM, SIGHUP, kMessage));

TEST(Type, WhatAKillLeavesIsClearedAwayByTheNext) {
  const OwnFolder folder;
  RunningProgram killed(
      folder, {.arguments = {"type", "--delay", "60000"}, .input = std::string(kMistakes)});
  ASSERT_TRUE(eventually([&] { return bothAnnounced(folder, killed); }));
  killed.signal(SIGKILL);
  EXPECT_EQ(killed.wait(), 128 + SIGKILL);
  EXPECT_TRUE(eventually([&] { return !hasSegment(killed.pid()); })) << "the stand-in lives on";
  ASSERT_EQ(entriesIn(folder.usualRuntimeFolder()), 1U);
  RunningProgram next(folder, {.arguments = {"type"}, .input = std::string(kMistakes)});
  EXPECT_EQ(next.wait(), 0);
  EXPECT_EQ(next.output(), kCorrected);
  EXPECT_EQ(next.errors(), "");
  EXPECT_EQ(entriesIn(folder.usualRuntimeFolder()), 0U);
  EXPECT_FALSE(hasSegment(next.pid()));
}

TEST(Type, SeveralRunSideBySide) {
  const OwnFolder folder;
  const std::vector<std::string> arguments{"type", "--delay", "5"};
  auto other = std::async(std::launch::async, [&] {
    return typedUntilRight(folder, {arguments, std::string(kMistakes)}, std::string(kCorrected));
  });
  const std::string text = "teh\tna\xC3\xAFve \xE2\x82\xAC \xF0\x9F\x90\xA6 (\"x\")\n\nend teh\n";
  RunningProgram plain(folder, {.arguments = {"type", "--no-checker"}, .input = text});
  const std::string right = "I believe the words. ";
  EXPECT_EQ(typedUntilRight(folder, {arguments, "I beleive teh words. "}, right), right);
  EXPECT_EQ(other.get(), kCorrected);
  EXPECT_EQ(plain.wait(), 0);
  EXPECT_EQ(plain.output(), text) << "nobody corrects it";
}

}  // namespace
}  // namespace quorvane::tests
