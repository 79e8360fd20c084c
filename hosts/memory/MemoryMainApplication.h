#pragma once
// A scripted main application: the five segments, its process, its server port, and its answers to
// the request bits. It reads and writes the records by its own knowledge of their layout.
//
// tool record (880), big-endian words: field i at 68 + 4 i, QORVSTATUS entry i at 312 + 4 i,
// INTERACTIVESCANPTR entry i at 344 + 4 i. Text record (893): cursor, length (big-endian), text
// from byte 8, key byte at 392.

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/memory/MemoryClock.h"
#include "hosts/memory/MemoryMessagePorts.h"
#include "hosts/memory/MemoryProcesses.h"
#include "hosts/memory/MemorySharedMemory.h"

namespace quorvane::memory {

/// How it deals with a request bit.
struct Answer {
  /// From the moment it sees the bit, which it does when the clock moves. Empty: never.
  std::optional<double> afterTicks = 0;
  /// Runs before the bit is cleared.
  std::function<void()> action;
  /// Answer also where the bit has been taken back meanwhile, as a main application that lags does.
  bool evenIfTakenBack = false;
};

enum class SegmentFate { Kept, Removed };

struct PublishedText {
  std::uint32_t cursor = 0;
  std::uint32_t length = 0;
  std::string text;  ///< the bytes from the start up to the cursor, at most 384
  std::uint8_t keyByte = 0;
};

class MemoryMainApplication {
 public:
  static constexpr std::array<std::pair<std::uint32_t, std::size_t>, 5> kSegments{
      {{880, 376}, {893, 400}, {896, 408}, {897, 384}, {899, 708}}};
  static constexpr FourCharCode kSignature = "QVPX"_4cc;
  static constexpr std::string_view kServerPort = "Q7T2M4K9W1.com.tallowmere.Quorvane.server";
  static constexpr std::string_view kOwnPortPrefix = "Q7T2M4K9W1.com.tallowmere.QorvInPortServer";

  MemoryMainApplication(MemoryClock& clock, MemorySharedMemory& memory, MemoryProcesses& processes,
                        MemoryMessagePorts& ports);
  MemoryMainApplication(const MemoryMainApplication&) = delete;
  MemoryMainApplication& operator=(const MemoryMainApplication&) = delete;

  /// New segments with fields 6 and 42 set to 1 and field 49 to `appFlagStatus`, its server port,
  /// then its process, which is behind the others. Nothing happens while it runs.
  void launch(Notice notice = Notice::Queued);
  /// Process and port go. Segments that are kept are what a crash leaves; a later launch takes over
  /// by removing them. Nothing happens while it doesn't run.
  void vanish(Notice notice = Notice::Queued, SegmentFate segments = SegmentFate::Removed);
  [[nodiscard]] bool running() const { return running_; }
  [[nodiscard]] ProcessSerialNumber psn() const { return psn_; }
  void bringToFront(Notice notice = Notice::Queued) { processes_.setFront(psn_, notice); }

  // Records. Reading what isn't there gives 0, writing it does nothing.
  [[nodiscard]] std::uint32_t field(unsigned i) const { return toolWord(68, i); }
  void setField(unsigned i, std::uint32_t value) { setToolWord(68, i, value); }
  [[nodiscard]] std::uint32_t status(unsigned i) const { return toolWord(312, i); }
  void setStatus(unsigned i, std::uint32_t value) { setToolWord(312, i, value); }
  [[nodiscard]] std::uint32_t scanEntry(unsigned i) const { return toolWord(344, i); }
  void setScanEntry(unsigned i, std::uint32_t value) { setToolWord(344, i, value); }
  /// Pascal string at byte 4 of the tool record.
  [[nodiscard]] std::string clientName() const;
  [[nodiscard]] PublishedText published() const;
  /// The last command (896): its six words in this machine's order.
  [[nodiscard]] std::array<std::uint32_t, 6> command() const;
  /// Items behind count and checked position (897).
  void setMenuBuffer(const std::vector<std::string>& items, std::uint32_t checked);
  /// Id of the segment it holds for the key; for scribbling over it.
  [[nodiscard]] int segment(std::uint32_t key) const;

  // Fixes.
  /// Writes a text into the text record, cursor at its end, and sets field 11.
  void writeCorrectedText(std::string_view roman);
  /// Queues message 202 on the input method's port. False where it serves none.
  bool sendFix(std::uint32_t replaceCount, std::string_view utf8);
  /// Queues any message on the input method's port.
  bool sendMessage(std::int32_t id, std::optional<CFData> data);

  // Answers. A bit that has none isn't looked at and stays set. At first there is one for that of
  // the writing styles, which the input method waits for whenever the menu opens.
  void answer(unsigned bit, Answer answer) { answers_[bit] = {std::move(answer), std::nullopt}; }
  void answerScan(Answer answer) { answers_[kScanBit] = {std::move(answer), std::nullopt}; }
  void ignore(unsigned bit) { answers_.erase(bit); }
  void ignoreScan() { answers_.erase(kScanBit); }
  /// How many requests it has answered since it was made.
  [[nodiscard]] std::uint64_t answered() const { return answered_; }

  std::uint32_t appFlagStatus = 0x1800;
  /// What launch makes of a segment (by key) in place of the usual.
  std::map<std::uint32_t, SegmentOptions> segmentOptions;
  std::map<std::uint32_t, std::size_t> segmentSizes;
  /// What its server port does from the next launch on.
  MemoryServer server;

 private:
  /// Field 1 has bits 0 to 31; the scan, asked for by bit 16 of field 54, stands behind them.
  static constexpr unsigned kScanBit = 32;
  static constexpr std::uint32_t kScanMask = 0x10000;
  struct Pending {
    Answer answer;
    std::optional<std::uint64_t> dueAt;
  };
  [[nodiscard]] std::uint32_t toolWord(std::size_t base, unsigned i) const;
  void setToolWord(std::size_t base, unsigned i, std::uint32_t value);
  [[nodiscard]] bool asked(unsigned bit) const;
  void clearRequest(unsigned bit);
  void poll();
  void pollBit(unsigned bit, Pending& pending);

  MemoryClock& clock_;
  MemorySharedMemory& memory_;
  MemoryProcesses& processes_;
  MemoryMessagePorts& ports_;
  bool running_ = false;
  bool polling_ = false;
  ProcessSerialNumber psn_;
  std::map<std::uint32_t, int> segments_;
  std::map<unsigned, Pending> answers_;
  std::uint64_t answered_ = 0;
};

}  // namespace quorvane::memory
