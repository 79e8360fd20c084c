#pragma once
// The ways by which the rest of the system reaches the commit: text into the last client, or parked
// behind a harmless key press until an event brings a client along.

#include <string>

#include "src/base/Process.h"

namespace quorvane {

/// String path: direct where a client has been seen, parked otherwise. False: there aren't so many
/// characters before the caret, and nothing is inserted.
bool Do_nsstring_commit_to_composition(Process& process, const std::u16string& text,
                                       std::uint32_t replaceLength);
/// Byte path: always parks. The bytes are UTF-8.
void Do_commit_to_composition(Process& process, const std::uint8_t* bytes, std::uint32_t length,
                              std::uint32_t originalReplace);
void WakeUpFront(Process& process);

}  // namespace quorvane
