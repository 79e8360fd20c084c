#pragma once
// What the main application does at each look at the shared segments, and at each message: answers
// a sentence scan, keeps its window, and ends the other requests.

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "platform/Clock.h"
#include "tools/checker/AutoType.h"
#include "tools/checker/CheckerOptions.h"
#include "tools/checker/CorrectionWindow.h"
#include "tools/checker/Fix.h"
#include "tools/checker/InputMethodPort.h"
#include "tools/checker/PopupList.h"
#include "tools/checker/ToolRecord.h"
#include "tools/checker/Vouching.h"
#include "tools/checker/WordChoice.h"

namespace quorvane::checker {

struct Segments {
  std::span<std::uint32_t> tool;    ///< 880
  std::span<std::uint8_t> text;     ///< 893
  std::span<std::uint8_t> command;  ///< 896
};

enum class ScanEnd { NothingToFix, Fixed, Offered, NobodyToTell, Late };

/// Who wants to know. Every member may be empty.
struct Listener {
  std::function<void(ScanEnd)> scan{};
  std::function<void(const Fix&)> fix{};
  std::function<void(std::uint32_t command, std::uint32_t bits)> command{};
  /// A command that is none of the conversation's own; its bit is cleared behind it.
  std::function<void(std::uint32_t command)> perform{};
  /// Before the popup opens; null: after it has closed.
  std::function<void(const PopupList*)> popup{};
};

class Conversation {
 public:
  /// `choice` null: no dictionary, nothing is ever fixed.
  Conversation(const Segments& segments, WordChoice* choice, Clock& clock, InputMethodPort& port,
               const CheckerOptions& options, bool textsBeganWithUs, Listener listener);
  /// Closes the window; the segments are still there.
  ~Conversation();
  Conversation(const Conversation&) = delete;
  Conversation& operator=(const Conversation&) = delete;

  /// False where there was nothing to do.
  bool poll();
  /// Those are written out while their switch is on, also where spelling is off; null: none are.
  void expand(const Abbreviations* abbreviations) { abbreviations_ = abbreviations; }
  /// Puts a text in at the caret, in session and document; false: in neither.
  bool insert(std::u16string_view text);
  /// A command that came as a message; unknown ones do nothing. The reply goes once this returns.
  void obey(std::uint32_t command);

 private:
  struct Findings {
    std::vector<std::uint8_t> textRecord;  ///< that they are about
    std::optional<Fix> fix;
    bool chosen = false;      ///< the fix is the word choice's
    std::vector<Fix> offers;  ///< in the popup, in place of a fix
    bool sentenceStart = false;
  };
  struct Popup {
    std::vector<Fix> offers;               ///< by digit, from 1 on
    std::vector<std::uint8_t> textRecord;  ///< as it was published: any other closes the popup
  };

  [[nodiscard]] bool scanWanted() const;
  [[nodiscard]] bool inTime(std::uint64_t seenAt) const;
  [[nodiscard]] bool isStillThere(const Findings& found) const;
  [[nodiscard]] bool spellingWanted() const;
  [[nodiscard]] bool expansionWanted() const;
  void answerScan();
  Findings decide();
  void check(const TextRecord& record, std::size_t vouchedFrom, Findings& found);
  [[nodiscard]] SessionKey session() const;
  std::uint32_t takeSessionChange();
  std::optional<Fix> inManner(std::optional<Fix> fix, const TextRecord& record);
  ScanEnd hand(const Fix& fix);
  ScanEnd mend(const Fix& fix);
  ScanEnd openPopup(std::vector<Fix> offers);
  void tell(ScanEnd end);

  bool clearCommands();
  void forget(std::uint32_t command);
  bool closeStalePopup();
  void closeWindow();
  void popupKey();
  void popupNavigation();
  void judgeClick();
  bool choose(std::size_t index);
  [[nodiscard]] std::uint32_t clientSignature() const;

  ToolRecord tool_;
  std::span<std::uint8_t> text_;
  std::span<std::uint8_t> command_;
  WordChoice* choice_;
  const Abbreviations* abbreviations_ = nullptr;
  Clock& clock_;
  InputMethodPort& port_;
  CheckerOptions options_;
  Vouching vouching_;
  Listener listener_;
  std::optional<Fix> staleFix_;
  CorrectionWindow window_;
  std::optional<Popup> popup_;
  std::vector<std::uint8_t> popupText_;  ///< to the cursor, when the latest popup opened
};

}  // namespace quorvane::checker
