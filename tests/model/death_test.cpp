// The main application vanishes before each single call that a step makes on the platform. Whatever
// the moment, the key passes, nothing stays locked, and typing goes on with and without a
// successor.

#include <gtest/gtest.h>

#include <array>

#include "src/bridge/QBIMMessageSend.h"
#include "tools/support/StartedInputMethod.h"

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

const std::array<Step, 5> kSteps{{
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
}};

struct Death {
  const Step& step;
  SegmentFate fate;
  Notice notice;
  bool noticeDelivered;  ///< before the next key
  std::uint64_t call;    ///< the platform call of the step that it comes before; 0: it doesn't
};

class DeathTest {
 public:
  explicit DeathTest(const Death& death) : death_(death) {
    method_.type(death.step.before);
    record_ = method_.host.mainApplication.segment(880);
    const std::uint64_t before = method_.host.journal.calls();
    method_.host.journal.beforeCall(
        death_.call, [this] { method_.host.mainApplication.vanish(death_.notice, death_.fate); });
    death_.step.run(method_);
    calls_ = method_.host.journal.calls() - before;
    method_.host.journal.beforeCall(0, {});
    document_ = death_.step.document;
  }

  [[nodiscard]] std::uint64_t calls() const { return calls_; }

  void check() {
    EXPECT_FALSE(method_.host.mainApplication.running());
    expectDocument("at the step");
    expectNothingLocked("after the step");
    if (death_.noticeDelivered) method_.host.runPending();
    typeBoth("w");
    expectNothingLocked("after the next key");
    method_.host.mainApplication.launch();
    method_.host.runPending();
    typeBoth("q");
    typeBoth(" ");
    expectNothingLocked("after a restart");
    expectScansAgain();
  }

 private:
  void typeBoth(const char* text) {
    for (const char* at = text; *at; ++at) {
      typeOne(method_, static_cast<char16_t>(*at));
      document_ += static_cast<char16_t>(*at);
    }
    expectDocument(text);
  }
  void expectDocument(const char* when) { EXPECT_EQ(method_.document.text(), document_) << when; }

  void expectNothingLocked(const char* when) {
    const auto& controller = method_.process.state<ControllerState>();
    const auto& commit = method_.process.state<CommitState>();
    const auto& send = method_.process.state<MessageSendState>();
    EXPECT_EQ(controller.handleEvent_BUSY, 0u) << when;
    EXPECT_EQ(send.TOOLCALLBUSY, 0) << when;
    EXPECT_EQ(send.AEITEM_Process_active, 0) << when;
    EXPECT_FALSE(commit.stringbuffer) << when;
    EXPECT_EQ(commit.ORIGINALREPLACE, 0u) << when;
    EXPECT_EQ(field(16), 0u) << when;
    EXPECT_EQ(field(22), 0u) << when;
    EXPECT_FALSE(method_.host.text.delivering()) << when;
    EXPECT_TRUE(method_.host.text.errors().empty()) << when;
    EXPECT_LE(method_.host.sharedMemory.totalAttachments(), 1u) << when;
  }
  /// 0 where the record is gone.
  [[nodiscard]] std::uint32_t field(std::size_t i) const {
    return method_.host.sharedMemory.readWord(record_, 68 + 4 * i);
  }

  void expectScansAgain() {
    const auto& main = method_.host.mainApplication;
    const std::uint64_t answered = main.answered();
    typeBoth("ok.");
    EXPECT_EQ(main.answered(), answered + 1);
    EXPECT_EQ(main.published().text, method_.sessionText());
    EXPECT_TRUE(method_.sessionText().ends_with(" ok.")) << method_.sessionText();
  }

  Death death_;
  StartedInputMethod method_;
  std::u16string document_;
  int record_ = 0;
  std::uint64_t calls_ = 0;
};

class DeathAtEveryStep : public testing::TestWithParam<std::size_t> {};

TEST_P(DeathAtEveryStep, TheKeyPassesAndTypingGoesOn) {
  const Step& step = kSteps.at(GetParam());
  const std::uint64_t calls = DeathTest({step, SegmentFate::Kept, Notice::Queued, true, 0}).calls();
  ASSERT_GT(calls, 5u);
  for (const SegmentFate fate : {SegmentFate::Removed, SegmentFate::Kept}) {
    for (const auto& [notice, delivered] :
         {std::pair(Notice::Queued, true), std::pair(Notice::Queued, false),
          std::pair(Notice::Missed, false)}) {
      for (std::uint64_t call = 1; call <= calls; ++call) {
        SCOPED_TRACE(std::string(step.name) + ", before call " + std::to_string(call) +
                     (fate == SegmentFate::Kept ? ", segments kept" : ", segments removed") +
                     (notice == Notice::Missed ? ", no notice"
                      : delivered              ? ""
                                               : ", late notice"));
        DeathTest({step, fate, notice, delivered, call}).check();
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Steps, DeathAtEveryStep, testing::Range<std::size_t>(0, kSteps.size()));

}  // namespace
}  // namespace quorvane
