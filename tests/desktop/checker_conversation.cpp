// The stand-in's side of a scan, over segments in plain memory, with a clock that each step moves.

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <functional>

#include "tools/checker/Conversation.h"

namespace quorvane::checker {
namespace {

constexpr std::uint64_t kMillisecond = 1'000'000;

class TurnedClock : public Clock {
 public:
  std::uint64_t now = 0;
  std::uint64_t mach_absolute_time() override { return now; }
  double GetCurrentEventTime() override { return 0; }
  void usleep(std::uint32_t microseconds) override { now += microseconds * std::uint64_t{1000}; }
};

/// Knows one mistake; `thinking` runs while it looks for suggestions.
class OneMistake : public Spelling {
 public:
  std::function<void()> thinking = [] {};
  int asked = 0;
  bool accepts(const std::string& word) override { return word != "teh"; }
  std::vector<std::string> suggestions(const std::string& /*word*/) override {
    ++asked;
    thinking();
    return {"the"};
  }
};

class RecordedPort : public InputMethodPort {
 public:
  std::int32_t pid = 1;
  bool present = true;
  bool accepting = true;
  std::function<void()> sending = [] {};
  std::vector<std::pair<std::int32_t, std::vector<std::uint8_t>>> sent;

  [[nodiscard]] std::int32_t asker() const override { return pid; }
  bool find() override { return present; }
  bool send(std::int32_t messageId, std::span<const std::uint8_t> payload) override {
    sending();
    if (accepting) sent.emplace_back(messageId, std::vector(payload.begin(), payload.end()));
    return accepting;
  }
  [[nodiscard]] const std::string& name() const override { return name_; }

 private:
  std::string name_ = "port";
};

class CheckerConversation : public testing::Test {
 protected:
  /// What the input method does at the key that is the last of `typed`.
  void scan(std::string_view typed, std::uint32_t change = 0) {
    TextRecord record{{typed.begin(), typed.end()}, typed.size(), 0};
    encodeTextRecord(record, text);
    text[392] = static_cast<std::uint8_t>(typed.back());
    fields.put(At::AppFlags, flags);
    fields.put(At::SessionChange, change);
    fields.put(At::Requests, kScanBit);
    fields.put(At::ScanFlags, kScanBit);
    conversation.poll();
  }

  [[nodiscard]] std::string published() const {
    const auto record = decodeTextRecord(text);
    return record ? std::string(record->text.begin(), record->text.end()) : "no record";
  }
  [[nodiscard]] bool answered() const {
    return fields.get(At::Requests) == 0 && fields.get(At::ScanFlags) == 0;
  }

  std::array<std::uint32_t, kToolRecordSize / 4> tool{};
  alignas(4) std::array<std::uint8_t, kTextRecordSize> text{};
  std::array<std::uint8_t, 408> command{};
  ToolRecord fields{tool};
  std::uint32_t flags = 0x11833;
  TurnedClock clock;
  OneMistake spelling;
  RecordedPort port;
  Conversation conversation{Segments{tool, text, command}, &spelling, clock, port, {}, true, {}};
};

TEST_F(CheckerConversation, AFixIsWrittenThenSentThenTheBitsAreCleared) {
  bool ordered = false;
  port.sending = [&] {
    ordered = published() == "a the " && fields.get(At::BufferChanged) == 1 &&
              fields.get(At::Requests) == kScanBit && fields.get(At::ScanFlags) == kScanBit;
  };
  scan("a teh ");
  EXPECT_TRUE(ordered);
  EXPECT_TRUE(answered());
  ASSERT_EQ(port.sent.size(), 1U);
  EXPECT_EQ(port.sent[0].first, 202);
  EXPECT_EQ(port.sent[0].second, (std::vector<std::uint8_t>{0, 0, 0, 4, 't', 'h', 'e', ' '}));
  scan("a the ");
  EXPECT_EQ(port.sent.size(), 1U);
  EXPECT_EQ(spelling.asked, 1);
}

TEST_F(CheckerConversation, ALateFixIsDroppedWholeAndTheScanStillEnds) {
  spelling.thinking = [&] { clock.now += 60 * kMillisecond; };
  scan("teh ");
  EXPECT_FALSE(answered()) << "looked at anew, since another scan may have begun";
  conversation.poll();
  EXPECT_TRUE(answered());
  EXPECT_EQ(published(), "teh ");
  EXPECT_EQ(fields.get(At::BufferChanged), 0U);
  EXPECT_TRUE(port.sent.empty());

  spelling.thinking = [&] { clock.now += 59 * kMillisecond; };
  scan("teh teh ");
  EXPECT_EQ(published(), "teh the ");
}

TEST_F(CheckerConversation, AScanThatEndsMeanwhileTakesItsFixAlong) {
  spelling.thinking = [&] { fields.put(At::ScanFlags, 0); };
  scan("teh ");
  EXPECT_EQ(published(), "teh ");
  EXPECT_TRUE(port.sent.empty());
  conversation.poll();
  EXPECT_TRUE(answered()) << "the request bit that nobody waits for goes, too";
}

TEST_F(CheckerConversation, WithoutAWayToTheDocumentTheTextStaysAsItIs) {
  port.present = false;
  scan("teh ");
  port.present = true;
  port.accepting = false;
  scan("x teh ");
  EXPECT_EQ(published(), "x teh ");
  EXPECT_EQ(fields.get(At::BufferChanged), 0U);
  EXPECT_TRUE(answered());
}

TEST_F(CheckerConversation, ChangeCodesAreZeroedAndLeaveTheNextWordAlone) {
  for (const std::uint32_t change : {kTextOverflowed, kTextCancelled}) {
    scan("teh ", change);
    EXPECT_EQ(fields.get(At::SessionChange), 0U);
    EXPECT_EQ(published(), "teh ");
    scan("teh teh ");
    EXPECT_EQ(published(), "teh the ");
  }
  scan("teh the teh ", 1);
  EXPECT_EQ(fields.get(At::SessionChange), 0U);
  EXPECT_EQ(port.sent.size(), 3U) << "a cursor moved left hides nothing";
}

TEST_F(CheckerConversation, SwitchesTurnSpellingOffButEveryScanEnds) {
  for (const std::uint32_t off : {0x11831U, 0x11873U, 0U}) {
    flags = off;
    scan("teh ");
    EXPECT_TRUE(answered());
    text[3] = 0;  // another text next time
    scan("x ");
  }
  EXPECT_TRUE(port.sent.empty());
}

TEST_F(CheckerConversation, OtherRequestsEndAndAClickIsNeverOurs) {
  const std::uint32_t judgeClick = 108;
  std::memcpy(command.data(), &judgeClick, sizeof(judgeClick));
  fields.put(At::MousePoint, 0x00100010);
  fields.put(At::Requests, 1U << 17 | 1U << 3);
  EXPECT_TRUE(conversation.poll());
  EXPECT_EQ(fields.get(At::Requests), 0U);
  EXPECT_EQ(fields.get(At::MousePoint), 0U);
  EXPECT_FALSE(conversation.poll());
}

}  // namespace
}  // namespace quorvane::checker
