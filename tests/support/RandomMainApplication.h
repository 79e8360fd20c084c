#pragma once
// An honest main application that does at random whatever it may, and tells the model of it.

#include <optional>

#include "hosts/memory/MemoryHost.h"
#include "src/base/Text.h"
#include "tests/support/InputMethodModel.h"
#include "tests/support/RandomKeys.h"

namespace quorvane::model {

class RandomMainApplication {
 public:
  RandomMainApplication(Random& random, memory::MemoryHost& host, InputMethodModel& model)
      : random_(random), host_(host), model_(model) {
    begin();
  }

  /// Ends or is killed, and is launched again, between two events.
  void restart() {
    using memory::SegmentFate;
    host_.mainApplication.vanish(memory::Notice::Queued,
                                 random_.chance(500) ? SegmentFate::Kept : SegmentFate::Removed);
    host_.mainApplication.launch();
    model_.restarted();
    begin();
  }

  void begin() {
    host_.messagePorts.server(memory::MemoryMainApplication::kServerPort)->answer =
        [this](std::int32_t command, const CFData&) {
          answer(static_cast<std::uint32_t>(command));
          return CFData{};
        };
    for (const unsigned field : {kRequests, kPortBusy, kBusy, kScanFlags}) write(field, 0);
    setState();
    chooseScanAnswer();
  }

  /// Windows, smart characters, the clipboard, a suspension, another text.
  void setState() {
    constexpr std::array<std::uint32_t, 4> kOwners{0, kEditor, kEditor, kMainApplication};
    write(kWindow, random_.oneOf(std::array{0U, 0U, 1U, 1U, 2U, 0x100U}));
    write(kWindowOwner, random_.oneOf(kOwners));
    write(kPasteTarget, random_.oneOf(kOwners));
    write(kControlDigits, random_.chance(300));
    write(kClipboard, random_.oneOf(std::array{0U, 0U, 0U, 1U, 2U}));
    write(kMenuFlags, random_.chance(100) ? 0x400 : 0);
    write(kMode, !random_.chance(100));
    write(kReady, random_.chance(500));
    write(kSmartCharacters, random_.oneOf(std::array{7U, 7U, 15U, random_.below(8)}));
    write(kSuspendTotal, random_.chance(200) ? random_.below(20) : 0);
    write(kSuspendCount, 0);
    write(kRequests, 0);
    if (random_.chance(300)) writeText();
  }

  void chooseScanAnswer() {
    memory::Answer scan;
    scan.afterTicks = random_.oneOf(std::array{0.0, 1.5});
    scan.action = [this] { answer(87); };
    host_.mainApplication.answerScan(scan);
  }

  void sendMessage() {
    if (random_.chance(600)) return sendFix();
    constexpr std::array<std::uint32_t, 14> kIds{
        250,        251, 250, 251, "Updt"_4cc, "Updt"_4cc, "gInt"_4cc,
        "gMen"_4cc, 202, 220, 230, 240,        7,          ~0U};
    const std::uint32_t number = random_.oneOf(std::array{kEditorPid, 0U, 9999U});
    const Message whole{static_cast<std::int32_t>(random_.oneOf(kIds)), number, u""};
    if (random_.chance(700)) return send(whole, bigEndian(number));
    const bool hasData = random_.chance(500);
    send({whole.id, {}, {}}, hasData ? std::optional(CFData(random_.below(4))) : std::nullopt);
  }

  void sendFix() {
    const std::uint32_t count =
        random_.chance(50) ? random_.word() : random_.below(12) * random_.below(2);
    sendFix(count, randomText(random_));
  }
  void sendFix(std::uint32_t count, const std::u16string& text) {
    Message fix{202, count, text};
    std::string utf8 = toUtf8(*fix.text);
    if (random_.chance(50)) {
      utf8 += '\xFF';
      fix.text.reset();
    }
    if (host_.mainApplication.sendFix(count, utf8)) sent(std::move(fix));
  }

  /// A message of its is on the way.
  [[nodiscard]] bool hasSent() const { return !sent_.empty(); }
  /// The run loop has turned: all messages have come in.
  void tellArrived() {
    for (; !sent_.empty(); sent_.pop_front()) model_.arrived(sent_.front());
  }

 private:
  // For 101 and 106 the input method waits, and takes in messages meanwhile.
  void answer(std::uint32_t command) {
    if (command == 104 || command == 105) return;  // nobody waits
    answering_ = &model_.answers.emplace_back(Asked{command, {}, {}, {}});
    const bool waits = command == 101 || command == 106;
    if (waits) answering_->arrived.swap(sent_);
    if (waits && random_.chance(300)) sendMessage();
    if (waits && random_.chance(600)) write(kPopupKey, random_.chance(500) ? 0 : random_.word());
    if (waits && random_.chance(300)) write(kWindow, 0);
    if (command == 87) write(kSentenceStart, random_.chance(300) ? 1 : 2 * random_.below(2));
    const std::uint32_t manner = command == 87 ? random_.below(10) : 9;
    if (manner < 3) writeText();
    if (manner == 3) correct();
    answering_ = nullptr;
    if (manner == 3) return sendFix(2, u"e ");
    if (command == 87 && random_.chance(300)) sendFix();
  }

  void write(unsigned field, std::uint32_t value) {
    host_.mainApplication.setField(field, value);
    (answering_ ? answering_->written : model_.fields)[field] = value;
  }

  void writeText() {
    RecordModel record;
    record.cursor = random_.chance(100) ? random_.word() : random_.below(390);
    record.length = random_.chance(800) ? record.cursor : record.cursor + random_.below(50);
    record.bytes.assign(384, 'w');
    constexpr std::string_view kMarks = " .\t\f\"'-\xCA\xD0\xD1\xD2\xD3\xD4\xD5";
    for (std::size_t i = 0; i < 384; i += 1 + random_.below(9)) {
      record.bytes[i] = random_.chance(500) ? ' ' : random_.oneOf(kMarks);
    }
    writeText(record);
  }

  /// What lies before the caret now ends in another way: the text of a fix for this scan.
  void correct() {
    RecordModel record;
    const std::string published = host_.mainApplication.published().text;
    if (published.size() < 2) return;
    record.bytes = published.substr(0, published.size() - 2) + "e ";
    record.cursor = record.length = static_cast<std::uint32_t>(published.size());
    record.bytes.resize(384);
    writeText(record);
  }

  void writeText(const RecordModel& record) {
    const int segment = host_.mainApplication.segment(893);
    host_.sharedMemory.writeWord(segment, 0, record.cursor);
    host_.sharedMemory.writeWord(segment, 4, record.length);
    host_.sharedMemory.write(segment, 8, CFData(record.bytes.begin(), record.bytes.end()));
    if (answering_) answering_->text = record;
    if (!answering_) model_.text = record;
    write(kTextChanged, 1);
  }

  void send(Message message, std::optional<CFData> data) {
    if (host_.mainApplication.sendMessage(message.id, std::move(data))) sent(std::move(message));
  }
  void sent(Message message) {
    (answering_ ? answering_->arrived : sent_).push_back(std::move(message));
  }

  static CFData bigEndian(std::uint32_t value) {
    return {static_cast<std::uint8_t>(value >> 24), static_cast<std::uint8_t>(value >> 16),
            static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)};
  }

  Random& random_;
  memory::MemoryHost& host_;
  InputMethodModel& model_;
  Asked* answering_ = nullptr;  ///< while it answers
  std::deque<Message> sent_;
};

}  // namespace quorvane::model
