#pragma once
// The step behind every change of the buffer: publish the text, and at the right moments have the
// main application look at it. And the way of a fix made here into the document.

#include <string>

#include "src/session/QBIM_IMK_Sessions.h"

namespace quorvane {

/// What the session core asks of the shell above it.
class FixTarget {
 public:
  virtual ~FixTarget() = default;

  /// Replaces `replaceLength` characters before the caret of the last client. False where there
  /// aren't so many: nothing is inserted.
  virtual bool Do_nsstring_commit_to_composition(const std::u16string& text,
                                                 std::uint32_t replaceLength) = 0;
  /// The byte path: parks the text for the next event.
  virtual void Do_commit_to_composition(const std::uint8_t* bytes, std::uint32_t length,
                                        std::uint32_t originalReplace) = 0;
  /// Publishes the place of the insertion point.
  virtual void Do_Get_Text_Position(BIMSessionRec* session) = 0;
};

struct InteractiveState {
  FixTarget* target = nullptr;  ///< null before the shell has started: nothing is committed
};

/// After each key. 1: it ended early, while suspended or at a key that calls for no scan.
/// `letterDeleted` isn't read; callers pass it all the same.
std::int32_t CallInteractiveEventHandler(Process& process, BIMSessionRec* session,
                                         std::uint8_t keyByte, bool letterDeleted);

/// The main application wants to hear of every key again. Only inside a ToolRec.
void endSuspension(Process& process);

/// Commits one Mac OS Roman byte as text. Where it can't be converted nothing is committed.
void Send_Char_Fix(Process& process, const std::uint8_t* byteAddress, std::uint32_t replaceLength);

/// The byte goes to the buffer and replaces one character through the parked path.
void DO_Fix_Commit_Composition(Process& process, BIMSessionRec* session, std::uint8_t keyByte);

}  // namespace quorvane
