#pragma once
// The way of a single character, put in the place of a key here, into the document.

#include "src/session/QBIM_IMK_SessionRecord.h"

namespace quorvane {

/// Commits one Mac OS Roman byte as text. Where it can't be converted nothing is committed.
void Send_Char_Fix(Instance& instance, const std::uint8_t* byteAddress, Utf16Units replaceLength);

/// The byte goes to the buffer and replaces one character through the parked path.
void DO_Fix_Commit_Composition(Instance& instance, BIMSessionRec* session, std::uint8_t keyByte);

}  // namespace quorvane
