// The main application's side: the stand-in's whole conversation over segments that hold anything,
// with a dictionary and a port that answer anything.

#include <string>
#include <string_view>
#include <utility>

#include "fuzz/Target.h"
#include "hosts/memory/MemoryClock.h"
#include "tools/checker/Conversation.h"

namespace quorvane::fuzz {
namespace {

constexpr int kStepLimit = 300;
constexpr std::size_t kToolWords = 1024;  // a page

// Rejects words by a letter that the input chooses, and offers what it says.
class AnyChoice : public checker::WordChoice {
 public:
  std::optional<std::string> replacement(const checker::TypedWord& word) override {
    require(!word.spelt.empty(), "no empty word is looked up");
    if (word.spelt.find(wrong) == std::string::npos) return std::nullopt;
    return word.spelt + "s";
  }
  std::vector<std::string> offers(const checker::TypedWord& word) override {
    if (!replacement(word)) return {};
    std::vector<std::string> all = offered;
    all.push_back(word.spelt.substr(1));
    all.push_back(word.spelt + "s");
    all.emplace_back(word.spelt.rbegin(), word.spelt.rend());
    return all;
  }

  char wrong = 'e';
  std::vector<std::string> offered;
};

class AnyPort : public checker::InputMethodPort {
 public:
  [[nodiscard]] std::int32_t asker() const override { return manner >> 2; }
  bool find() override { return (manner & 1) == 0; }
  bool send(std::int32_t /*messageId*/, Bytes payload) override {
    require(payload.size() >= 4 && payload[0] == 0 && payload[1] == 0, "a fix has a sane count");
    return (manner & 2) == 0;
  }
  [[nodiscard]] const std::string& name() const override { return name_; }

  std::uint8_t manner = 0;

 private:
  std::string name_ = "port";
};

struct StandIn {
  explicit StandIn(Input& input) {
    journal.setRecording(false);
    clock.step = 1000;
    const std::uint8_t manner = input.byte();
    tool.resize((manner & 1) != 0 ? input.byte() : kToolWords);
    text.resize((manner & 2) != 0 ? input.half() % 512 : 4096);
    command.resize((manner & 4) != 0 ? input.byte() : 4096);
    options.manner = static_cast<checker::Manner>(input.below(4));
    options.slowMilliseconds = input.byte();
    hasDictionary = (manner & 8) == 0;
    beganWithUs = (manner & 16) == 0;
    options.popup = (manner & 32) != 0;
    options.documentWindow = (manner & 64) != 0;
  }

  std::vector<std::uint32_t> tool;
  std::vector<std::uint8_t> text;
  std::vector<std::uint8_t> command;
  checker::CheckerOptions options;
  bool hasDictionary = true;
  bool beganWithUs = true;
  Journal journal;
  memory::MemoryClock clock{journal};
  AnyChoice choice;
  AnyPort port;
  std::uint32_t message = 0;  // to come next, before the next look
};

void writeWord(StandIn& standIn, std::size_t offset, std::uint32_t value) {
  if (offset / 4 < standIn.tool.size()) standIn.tool[offset / 4] = __builtin_bswap32(value);
}
void write(std::vector<std::uint8_t>& segment, std::size_t at, Bytes bytes) {
  const std::size_t room = segment.size() - std::min(at, segment.size());
  std::copy_n(bytes.begin(), std::min(bytes.size(), room), segment.end() - static_cast<long>(room));
}
void askForScan(StandIn& standIn) {
  constexpr std::size_t kAppFlags = 264;
  constexpr std::size_t kScanFlags = 284;
  writeWord(standIn, kAppFlags, 0x11833);
  writeWord(standIn, kScanFlags, 0x10000);
}

// A text as the input method publishes it, grown by some bytes.
void publish(StandIn& standIn, Input& input, std::vector<std::uint8_t>& text) {
  const Bytes more = input.counted();
  text.insert(text.end(), more.begin(), more.end());
  text.resize(std::min<std::size_t>(text.size(), 384));
  checker::encodeTextRecord({text, text.size(), 0}, standIn.text);
  if (!text.empty()) write(standIn.text, 392, {&text.back(), 1});
}

void step(StandIn& standIn, Input& input, std::vector<std::uint8_t>& text) {
  switch (input.below(13)) {
    case 0: {
      const std::size_t offset = 4 * input.below(96);
      return writeWord(standIn, offset, input.number());
    }
    case 1: {
      const std::size_t at = input.half() % 512;
      return write(standIn.text, at, input.counted());
    }
    case 2:
      return write(standIn.command, 0, input.counted());
    case 3:
      standIn.port.manner = input.byte();
      return;
    case 4:
      standIn.clock.step = std::uint64_t{input.byte()} * 1'000'000;
      return;
    case 5:
      standIn.choice.wrong = static_cast<char>(input.byte() & 0x7F);
      return;
    case 6:
      standIn.choice.offered.emplace_back(textOf(input.counted()));
      if (standIn.choice.offered.size() > 8) standIn.choice.offered.clear();
      return;
    case 7:
      text.clear();
      return;
    case 8:
      return writeWord(standIn, 204, input.byte() % 4U);
    case 9:
      return writeWord(standIn, 360, input.byte() % 5U);
    case 10: {
      constexpr std::size_t kPopupChar = 172;
      writeWord(standIn, kPopupChar, input.byte() % 64U);
      standIn.message = static_cast<std::uint32_t>(100 + input.below(8));
      return;
    }
    default:
      publish(standIn, input, text);
      return askForScan(standIn);
  }
}

void checkFix(const checker::Fix& fix) {
  require(fix.corrected.text.size() <= fix.corrected.length, "a corrected cursor is in its text");
  require(fix.corrected.length <= checker::kTextCapacity, "a corrected text has room");
  require(fix.count <= checker::kTextCapacity, "a fix reaches back inside the text");
}
void checkPopup(const checker::PopupList* list) {
  require(list == nullptr || checker::formatPopupList(*list), "what is offered can be written");
}
void checkPopupFile(std::string_view content) {
  const auto list = checker::parsePopupList(content);
  if (list) require(checker::formatPopupList(*list) == content, "only what is written is read");
}

}  // namespace

void run(Bytes bytes) {
  checkPopupFile(textOf(bytes));
  Input input(bytes);
  StandIn standIn(input);
  std::vector<std::uint8_t> text;
  checker::Conversation conversation({standIn.tool, standIn.text, standIn.command},
                                     standIn.hasDictionary ? &standIn.choice : nullptr,
                                     standIn.clock, standIn.port, standIn.options,
                                     standIn.beganWithUs, {.fix = checkFix, .popup = checkPopup});
  for (int left = kStepLimit; left > 0 && !input.empty(); --left) {
    step(standIn, input, text);
    if (standIn.message != 0) conversation.obey(std::exchange(standIn.message, 0));
    conversation.poll();
  }
}

}  // namespace quorvane::fuzz
