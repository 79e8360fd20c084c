#pragma once
// The mirror between a session and shared memory: the text record going out and coming back, and
// the marks that travel in the tool record.
//
//   text record   0        4        8                         392
//                 cursor   length   text, cursor + 1 bytes    key byte
//                 big-endian words

#include "src/session/QBIM_IMK_SessionRecord.h"

namespace quorvane {

/// Publishes the session with the key just typed. 1: the text was copied.
std::int32_t Set_InteractiveSession(Instance& instance, BIMSessionRec* session,
                                    std::uint8_t keyByte);

/// Takes in what the main application changed. Null: the active session. True: the text, too.
bool takeChanges(Instance& instance, BIMSessionRec* session);
/// The same for a text that no message belongs to.
void Update_Document_Session(Instance& instance, BIMSessionRec* session);

/// Copies the text back into the session. 1: done. A cursor or length that no session could have is
/// bounded to what the buffer holds.
std::int32_t CheckEditReplacements(Instance& instance, BIMSessionRec* session);

}  // namespace quorvane
