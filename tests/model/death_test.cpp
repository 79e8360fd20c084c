// The main application vanishes before each single call that a step makes on the platform. Whatever
// the moment, the key passes, nothing stays locked, and typing goes on with and without a
// successor.

#include <gtest/gtest.h>

#include <array>

#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/QBIMMessageSend.h"
#include "src/menu/OpeningRoute.h"
#include "tests/support/EveryCall.h"
#include "tests/support/StartedInputMethod.h"

namespace quorvane {
namespace {

using memory::Notice;
using memory::SegmentFate;
using test::StartedInputMethod;

struct Step {
  const char* name;
  const char* before;  ///< typed before the main application is in danger
  void (*run)(StartedInputMethod& method);
  const char16_t* document;  ///< afterwards
};

// The key down alone: a key up would clean up behind it.
void typeOne(StartedInputMethod& method, char16_t character) {
  const NSEvent key{NSEventType::KeyDown, 0, 0, {character}, nullptr};
  EXPECT_EQ(method.host.text.deliver(key), field::Outcome::PassedOn);
}

const std::array<Step, 7> kSteps{{
    {"a key with a scan", "teh", [](StartedInputMethod& method) { typeOne(method, u' '); },
     u"teh "},
    {"a letter", "te", [](StartedInputMethod& method) { typeOne(method, u'h'); }, u"teh"},
    {"a parked commit", "",
     [](StartedInputMethod& method) {
       method.host.mainApplication.sendFix(0, "the ");
       method.host.runPending();
       typeOne(method, u'x');
     },
     u"the x"},
    {"a fix", "see teh",
     [](StartedInputMethod& method) {
       method.host.mainApplication.sendFix(3, "the");
       method.host.runPending();
     },
     u"see the"},
    {"a scan, then a fix", "see teh",
     [](StartedInputMethod& method) {
       method.host.mainApplication.sendFix(4, "the ");
       typeOne(method, u' ');
       method.host.runPending();
     },
     u"see the "},
    {"another application begins and ends", "te",
     [](StartedInputMethod& method) {
       const auto other = method.host.processes.add({{}, 0, "Other", "OTHR"_4cc, 0, 0, "x", false});
       method.host.runPending();
       method.host.processes.remove(other);
       method.host.runPending();
       typeOne(method, u'h');
     },
     u"teh"},
    {"a command that launches it, in vain", "te",
     [](StartedInputMethod& method) {
       memory::MemoryInstalledApplication again;
       again.path = method.host.files.applicationsFolder + "/Quorvane_ARC7_X/Quorvane.app";
       again.process.signature = memory::MemoryMainApplication::kSignature;
       again.afterTicks.reset();
       method.host.launchServices.install(again);
       CallQuorvaneToolCommand(method.instance, 33, false);
       method.host.processes.setFront(memory::MemoryProcesses::editor());
       method.host.runPending();
     },
     u"te"},
}};

class DeathTest : public StartedInputMethod {
 public:
  explicit DeathTest(const Step& step) : expected_(step.document) {
    type(step.before);
    record_ = host.mainApplication.segment(880);
  }

  void check(bool noticeDelivered) {
    EXPECT_FALSE(host.mainApplication.running());
    expectSound("after the step");
    if (noticeDelivered) host.runPending();
    typeBoth("w");
    expectSound("after the next key");
    host.mainApplication.launch();
    host.runPending();
    typeBoth("q ");
    expectSound("after a restart");
    expectScansAgain();
  }

 private:
  void typeBoth(std::string_view text) {
    for (const char c : text) typeOne(*this, static_cast<char16_t>(c));
    expected_.append(text.begin(), text.end());
  }

  void expectSound(const char* when) {
    EXPECT_EQ(document.text(), expected_) << when;
    const auto& events = instance.state<ControllerState>();
    const auto& commit = instance.state<CommitState>();
    const auto& send = instance.state<MessageSendState>();
    EXPECT_EQ(events.handleEvent_BUSY + send.TOOLCALLBUSY + send.AEITEM_Process_active, 0u) << when;
    EXPECT_FALSE(commit.stringbuffer || instance.state<LaunchServerState>().launched_busy) << when;
    EXPECT_EQ(commit.ORIGINALREPLACE, Utf16Units{0}) << when;
    EXPECT_EQ(field(16) | field(22), 0u) << when;
    EXPECT_FALSE(host.text.delivering()) << when;
    EXPECT_TRUE(host.text.errors().empty()) << when;
    EXPECT_LE(host.sharedMemory.totalAttachments(), 1u) << when;
  }
  /// 0 where the record is gone.
  [[nodiscard]] std::uint32_t field(std::size_t i) const {
    return host.sharedMemory.readWord(record_, 68 + 4 * i);
  }

  void expectScansAgain() {
    const auto& main = host.mainApplication;
    const std::uint64_t answered = main.answered();
    typeBoth("ok.");
    EXPECT_EQ(main.answered(), answered + 1);
    EXPECT_EQ(main.published().text, sessionText());
    EXPECT_EQ(document.text(), expected_);
    EXPECT_TRUE(sessionText().ends_with(" ok.")) << sessionText();
  }

  std::u16string expected_;
  int record_ = 0;
};

class DeathAtEveryStep : public testing::TestWithParam<std::size_t> {};

TEST_P(DeathAtEveryStep, TheKeyPassesAndTypingGoesOn) {
  const Step& step = kSteps.at(GetParam());
  std::uint64_t deaths = 0;
  for (const SegmentFate fate : {SegmentFate::Removed, SegmentFate::Kept}) {
    for (const auto& [notice, delivered] :
         {std::pair(Notice::Queued, true), std::pair(Notice::Queued, false),
          std::pair(Notice::Missed, false)}) {
      SCOPED_TRACE(std::string(step.name) +
                   (fate == SegmentFate::Kept ? ", segments kept" : ", segments removed") +
                   (notice == Notice::Missed ? ", no notice"
                    : delivered              ? ""
                                             : ", late notice"));
      test::atEveryCall(
          1, 1, [&] { return std::make_unique<DeathTest>(step); },
          [&](DeathTest& test, std::uint64_t) { test.host.mainApplication.vanish(notice, fate); },
          [&](DeathTest& test, std::uint64_t) { step.run(test); },
          [&](DeathTest& test, std::uint64_t) {
            test.check(delivered);
            ++deaths;
          });
    }
  }
  EXPECT_GT(deaths, 30u);
}

INSTANTIATE_TEST_SUITE_P(Steps, DeathAtEveryStep, testing::Range<std::size_t>(0, kSteps.size()));

}  // namespace
}  // namespace quorvane
