#pragma once
// The input method's own port: fixes to commit, and orders of the checker's side.

#include <memory>
#include <optional>
#include <string>

#include "src/base/Process.h"

namespace quorvane {

inline constexpr std::int32_t kBasicMessageInput = 202;
inline constexpr std::int32_t kBasicMessage_DockCommand = 230;
inline constexpr std::int32_t kBasicMessagePaste = 250;
inline constexpr std::int32_t kBasicMessage_DoSpecialPasteCommand = 251;

/// What messages ask of the rooms above.
class MessageTarget {
 public:
  virtual ~MessageTarget() = default;

  /// Handle of the active session, 0 for none.
  virtual std::uint64_t BIMGetActiveSession() = 0;
  /// The session's kind; 0 where the session is gone.
  virtual std::uint32_t documentTag(std::uint64_t session) = 0;
  /// Nothing where the session is gone.
  virtual void Update_Document_Session(std::uint64_t session) = 0;
  /// Replaces `replaceLength` characters before the caret, unless that contradicts what was typed.
  /// Null: the message has no text, and what the shared record says of it doesn't hold either.
  virtual void commitFix(const std::u16string* text, std::uint32_t replaceLength) = 0;
  /// Presses the paste keys in a client; process id 0: in the one that the shared record names.
  virtual void Post_Paste_CommandKey(std::int32_t pid) = 0;
  virtual void Post_SpecialPaste_CommandKey(std::int32_t pid) = 0;
};

struct MessageReceiveState {
  MessageTarget* target = nullptr;
  /// The run loop may hold the port longer than the process lives: the port then finds this gone.
  std::shared_ptr<const bool> alive = std::make_shared<const bool>(true);
};

/// Null: messages that need a target do nothing. The target outlives its being set.
void setMessageTarget(Process& process, MessageTarget* target);

/// Opens the own port, for as long as the run loop lives. 0; the error of GetCurrentProcess; -1: no
/// port; -2: no run loop; -3: no source.
std::int32_t BIMInitializeMessageReceiving(Process& process);
std::string BIMCreatePortName(Process& process, const ProcessSerialNumber& serial);
/// One message. Nothing beyond the data is read, whatever it claims. There is never a reply.
std::optional<CFData> BIMMessagePortCallBack(Process& process, std::int32_t id, const CFData* data);

/// Mac OS Roman to UTF-16, little-endian. Empty where it can't be converted.
std::optional<CFData> Convert_ASCIITo_Unicode(Process& process, const std::uint8_t* text,
                                              std::uint32_t length);

}  // namespace quorvane
