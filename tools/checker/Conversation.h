#pragma once
// What the main application does at each look at the shared segments: answers a sentence scan and
// clears the other requests.

#include <cstdint>
#include <functional>
#include <optional>
#include <span>

#include "platform/Clock.h"
#include "tools/checker/CheckerOptions.h"
#include "tools/checker/Fix.h"
#include "tools/checker/InputMethodPort.h"
#include "tools/checker/Spelling.h"
#include "tools/checker/ToolRecord.h"
#include "tools/checker/Vouching.h"

namespace quorvane::checker {

struct Segments {
  std::span<std::uint32_t> tool;          ///< 880
  std::span<std::uint8_t> text;           ///< 893
  std::span<const std::uint8_t> command;  ///< 896
};

enum class ScanEnd { NothingToFix, Fixed, NobodyToTell, Late };

/// Who wants to know. Every member may be empty.
struct Listener {
  std::function<void(ScanEnd)> scan;
  std::function<void(const Fix&)> fix;
  std::function<void(std::uint32_t command, std::uint32_t bits)> command;
};

class Conversation {
 public:
  /// `spelling` null: no dictionary, nothing is ever fixed.
  Conversation(const Segments& segments, Spelling* spelling, Clock& clock, InputMethodPort& port,
               const CheckerOptions& options, bool textsBeganWithUs, Listener listener);

  /// False where there was nothing to do.
  bool poll();

 private:
  [[nodiscard]] bool scanWanted() const;
  [[nodiscard]] bool inTime(std::uint64_t seenAt) const;
  [[nodiscard]] bool spellingWanted() const;
  void answerScan();
  std::optional<Fix> decide();
  [[nodiscard]] SessionKey session() const;
  std::uint32_t takeSessionChange();
  std::optional<Fix> inManner(std::optional<Fix> fix, const TextRecord& record);
  ScanEnd hand(const Fix& fix);
  void tell(ScanEnd end);
  bool clearCommands();

  ToolRecord tool_;
  std::span<std::uint8_t> text_;
  std::span<const std::uint8_t> command_;
  Spelling* spelling_;
  Clock& clock_;
  InputMethodPort& port_;
  CheckerOptions options_;
  Vouching vouching_;
  Listener listener_;
  std::optional<Fix> staleFix_;
};

}  // namespace quorvane::checker
