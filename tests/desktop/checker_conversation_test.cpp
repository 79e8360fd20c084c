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
  Seconds GetCurrentEventTime() override { return {}; }
  Seconds CFAbsoluteTimeGetCurrent() override { return {}; }
  void usleep(Microseconds duration) override { now += duration.count() * std::uint64_t{1000}; }
};

/// Knows one mistake; `thinking` runs while it thinks.
class OneMistake : public WordChoice {
 public:
  std::function<void()> thinking = [] {};
  int asked = 0;
  std::vector<std::string> offers(const TypedWord& word) override {
    if (word.spelt != "teh") return {};
    ++asked;
    thinking();
    return {"the"};
  }
  std::optional<std::string> replacement(const TypedWord& word) override {
    const auto found = offers(word);
    return found.empty() ? std::nullopt : std::optional(found.front());
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
  explicit CheckerConversation(const CheckerOptions& chosen = {}) : options(chosen) {}

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

  /// A command in the way of a message, with a key in field 26; what is there afterwards.
  std::uint32_t ask(std::uint32_t message, std::uint32_t key) {
    fields.put(At::PopupChar, key);
    conversation.obey(message);
    return fields.get(At::PopupChar);
  }
  /// A command in the way of a bit.
  void request(std::uint32_t number, std::uint32_t bit) {
    std::memcpy(command.data(), &number, sizeof(number));
    fields.put(At::Requests, 1U << bit);
    EXPECT_TRUE(conversation.poll());
    EXPECT_EQ(fields.get(At::Requests), 0U);
  }
  void frontIs(std::uint32_t signature) {
    std::memcpy(command.data() + 12, &signature, sizeof(signature));
  }
  [[nodiscard]] std::string sentText(std::size_t index) const {
    if (index >= port.sent.size()) return "nothing";
    const auto& payload = port.sent[index].second;
    return std::to_string(payload[3]) + " " + std::string(payload.begin() + 4, payload.end());
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
  alignas(4) std::array<std::uint8_t, 408> command{};
  ToolRecord fields{tool};
  std::uint32_t flags = 0x11833;
  TurnedClock clock;
  OneMistake spelling;
  RecordedPort port;
  CheckerOptions options;
  std::vector<std::optional<PopupList>> popups;
  std::vector<std::uint32_t> performed;
  Conversation conversation{Segments{tool, text, command},
                            &spelling,
                            clock,
                            port,
                            options,
                            true,
                            {.perform = [this](std::uint32_t asked) { performed.push_back(asked); },
                             .popup =
                                 [this](const PopupList* list) {
                                   popups.push_back(list ? std::optional(*list) : std::nullopt);
                                 }}};
};

TEST_F(CheckerConversation, AFixIsWrittenThenSentThenTheBitsAreCleared) {
  bool ordered = false;
  port.sending = [&] {
    ordered = published() == "a the " && fields.get(At::BufferChanged) == 1 &&
              fields.get(At::SentenceStart) == 0 && fields.get(At::Requests) == kScanBit &&
              fields.get(At::ScanFlags) == kScanBit;
  };
  fields.put(At::SentenceStart, 1);
  scan("a teh ");
  EXPECT_TRUE(ordered);
  EXPECT_TRUE(answered());
  ASSERT_EQ(port.sent.size(), 1U);
  EXPECT_EQ(port.sent[0].first, 202);
  EXPECT_EQ(port.sent[0].second, (std::vector<std::uint8_t>{0, 0, 0, 4, 't', 'h', 'e', ' '}));
  scan("a the ");
  EXPECT_EQ(port.sent.size(), 1U);
  EXPECT_EQ(spelling.asked, 1);
  scan("a. ");
  EXPECT_EQ(fields.get(At::SentenceStart), 1U);
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
  spelling.thinking = [&] { text[8] = 'y'; };
  scan("x teh ");
  EXPECT_FALSE(answered()) << "the scan of another text by now";
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
  flags = 0x11833;
  fields.put(At::SmartCharacters, 4);
  scan("\xD1teh ");
  EXPECT_TRUE(port.sent.empty()) << "capitals alone: a letter of another script";
  fields.put(At::SmartCharacters, 2);
  scan("x \xD1teh ");
  EXPECT_EQ(port.sent.size(), 1U);
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

class CheckerPopup : public CheckerConversation {
 protected:
  CheckerPopup() : CheckerConversation({.popup = true, .controlDigits = true}) {
    frontIs(0x74657374);
    fields.put(At::TextPosition, 100U << 16 | 40);
  }
  [[nodiscard]] bool open() const { return fields.get(At::WindowOpen) == 1; }
};

TEST_F(CheckerPopup, AMisspeltWordIsOfferedInPlaceOfAFix) {
  fields.put(At::TextPosition, 100U << 16 | 32760);
  scan("a teh ");
  EXPECT_TRUE(answered() && port.sent.empty());
  EXPECT_EQ(fields.get(At::ControlDigits), 1U);
  EXPECT_TRUE(open());
  EXPECT_EQ(popups.back(), (PopupList{"teh", {"the"}}));
  EXPECT_EQ(fields.get(At::WindowClient), 0x74657374U);
  EXPECT_EQ(fields.get(At::WindowTopLeft), 32760U << 16 | 100);
  EXPECT_EQ(fields.get(At::WindowBottomRight), 32767U << 16 | (100 + 16));
  ask(104, 0);
  EXPECT_FALSE(popups.back());
  EXPECT_EQ(fields.get(At::WindowClient), 0U);
}

TEST_F(CheckerPopup, EachKeyHasItsAnswerAndNoDigitIsLost) {
  struct Row {
    std::uint32_t command, key, answer;
    std::string sent, published;
    bool staysOpen;
  };
  for (const Row& row : {
           Row{101, '1', '1', "4 the ", "the ", false},
           Row{101, '2', 0, "0 2", "teh 2", false},
           Row{101, '0', 0, "0 0", "teh 0", false},
           Row{101, 31, 31, "nothing", "teh ", false},
           Row{106, 9, 0, "4 the ", "the ", false},
           Row{106, 1, 1, "nothing", "teh ", true},
           Row{102, 1, 1, "nothing", "teh ", true},
           Row{105, 0, 0, "nothing", "teh ", false},
           Row{100, 0, 0, "nothing", "teh ", false},
       }) {
    scan("x ");
    scan("teh ");
    port.sent.clear();
    fields.put(At::BufferChanged, 0);
    EXPECT_EQ(ask(row.command, row.key), row.answer) << row.command << " " << row.key;
    EXPECT_EQ(sentText(0), row.sent) << row.command << " " << row.key;
    EXPECT_EQ(published(), row.published) << row.command << " " << row.key;
    EXPECT_EQ(fields.get(At::BufferChanged), port.sent.size());
    EXPECT_EQ(open(), row.staysOpen) << row.command << " " << row.key;
  }
}

TEST_F(CheckerPopup, ItClosesAtTheNextPublicationAndADigitIsThenTyped) {
  scan("teh ");
  EXPECT_FALSE(conversation.poll());
  EXPECT_TRUE(open());
  text[392] = 29;
  EXPECT_TRUE(conversation.poll());
  EXPECT_FALSE(open());
  scan("teh teh ");
  text[392] = 29;
  EXPECT_EQ(ask(101, '1'), 0U) << "not seen yet by a look";
  EXPECT_EQ(sentText(0), "0 1");
  scan("teh 1x");
  EXPECT_EQ(ask(101, '1'), 0U);
  EXPECT_EQ(port.sent.size(), 1U) << "it was typed while we stood still";
  scan("teh ");
  text[392] = 29;
  EXPECT_EQ(ask(106, 9), 9U);
  port.present = false;
  scan("teh teh 1 teh ");
  EXPECT_FALSE(open()) << "nobody could be told of a choice";
}

TEST_F(CheckerPopup, RequestsGoByBitAndCommandAndClicksInsideAreItsOwn) {
  scan("teh ");
  for (const auto& [vertical, horizontal, inside] : std::vector<std::array<std::uint32_t, 3>>{
           {100, 40, 1}, {115, 87, 1}, {99, 40, 0}, {116, 40, 0}, {100, 39, 0}, {100, 88, 0}}) {
    const std::uint32_t point = vertical << 16 | horizontal;
    fields.put(At::MousePoint, point);
    request(108, 17);
    EXPECT_EQ(fields.get(At::MousePoint), point * inside) << vertical << " " << horizontal;
  }
  fields.put(At::MousePoint, 1);
  request(17111, 17);
  request(65534, 19);
  EXPECT_EQ(fields.get(At::MousePoint), 1U);
  fields.put(At::Requests, 1U << 16 | 1U << 17 | 1U << 19);
  conversation.poll();
  EXPECT_EQ(performed, (std::vector<std::uint32_t>{17111, 65534}))
      << "their bits serve others, too";
  request(16390, 20);
  EXPECT_EQ(performed.back(), 16390U);
  EXPECT_TRUE(open());
  request(87, 0);
  EXPECT_FALSE(open()) << "the bit says what the command record no longer does";
}

class CheckerDocumentWindow : public CheckerConversation {
 protected:
  CheckerDocumentWindow() : CheckerConversation({.documentWindow = true}) {}
  std::uint32_t windowAfter(std::uint32_t front, std::string_view typed) {
    frontIs(front);
    scan(typed);
    return fields.get(At::WindowOpen);
  }
};

TEST_F(CheckerDocumentWindow, HidesShowsAndStaysClosed) {
  EXPECT_EQ(windowAfter(0, "x "), 0U) << "nobody's";
  EXPECT_EQ(windowAfter(7, "x teh "), 2U);
  EXPECT_EQ(sentText(0), "4 the ");
  ask(105, 0);
  ask(102, 1);
  EXPECT_EQ(windowAfter(8, "y "), 2U);
  EXPECT_EQ(fields.get(At::WindowClient), 7U);
  request(100, 2);
  EXPECT_EQ(windowAfter(8, "z "), 0U) << "another application's text";
  EXPECT_EQ(windowAfter(7, "y "), 2U);
  ask(104, 0);
  request(100, 2);
  EXPECT_EQ(windowAfter(7, "z "), 0U);
}

}  // namespace
}  // namespace quorvane::checker
