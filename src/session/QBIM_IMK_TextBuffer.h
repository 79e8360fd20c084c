#pragma once
// The private copy of the sentence being typed: it follows typing, backspace and arrows, and
// forgets its content at sentence boundaries once it grows long. No operation here allocates.

#include "src/session/QBIM_IMK_SessionRecord.h"

namespace quorvane {

/// Where a byte from 128 up comes from: it is the first of a character beyond ASCII that was typed,
/// or a character of Mac OS Roman that was put in its place.
enum class ByteOrigin { Key, Replacement };

/// Updates the buffer for one key and tells the interactive machinery. Nonzero: the key is
/// consumed. A null session is made and activated first.
std::int32_t BIMHandleInput(Instance& instance, BIMSessionRec* session, std::uint8_t keyByte,
                            ByteOrigin origin = ByteOrigin::Key);
/// Nothing: no range of the document is held. 0.
std::int32_t Cancel_DocumentTextRange();

}  // namespace quorvane
