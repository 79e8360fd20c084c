#pragma once
// The clipboard as a command of the menu uses it: what the client has copied for it is read and
// taken back at once; what is to be pasted stands there until the client has pasted it.

#include <optional>
#include <string>
#include <string_view>

#include "hosts/desktop/ClipboardFile.h"
#include "platform/Clock.h"
#include "tools/checker/ToolRecord.h"

namespace quorvane::checker {

class ClipboardLoan {
 public:
  /// Both references outlive this.
  ClipboardLoan(ToolRecord tool, desktop::ClipboardFile& clipboard, Clock& clock)
      : tool_(tool), clipboard_(clipboard), clock_(clock) {}
  ~ClipboardLoan() { end(); }
  ClipboardLoan(const ClipboardLoan&) = delete;
  ClipboardLoan& operator=(const ClipboardLoan&) = delete;

  /// What the client has copied for a command; none where it hasn't, since nothing was selected.
  /// The clipboard is then as it was before that.
  std::optional<std::string> takeCopied() { return clipboard_.takeCommandsCopy(); }

  /// Takes back what the client has copied for a command that won't come, and ends a loan once it
  /// has been pasted. False where it was for a paste alone.
  bool giveBack();

  /// Puts a text there for a paste that is to be asked for next. False where it can't be, or where
  /// another one waits for its paste.
  bool lend(std::string_view text);
  /// Ends a loan, and a restore that somebody else has asked for, where it is due; see below. False
  /// where there is none.
  bool poll();
  /// The clipboard is as it was, unless somebody else has written to it.
  void end();

 private:
  void enter(std::uint32_t state);
  [[nodiscard]] bool isDue();

  ToolRecord tool_;
  desktop::ClipboardFile& clipboard_;
  Clock& clock_;
  bool lent_ = false;
  std::uint32_t state_ = 0;  ///< of field 27, as it was seen last
  std::uint64_t since_ = 0;  ///< that state
};

}  // namespace quorvane::checker
