#pragma once
// Keys that take the caret where the private copy can't follow it, or that change the document
// somewhere else: the copy forgets its text, since a fix would land in the wrong place.

#include "src/session/QBIM_IMK_SessionRecord.h"

namespace quorvane {

[[nodiscard]] bool leavesText(std::uint8_t keyByte, std::uint32_t modifiers);
/// Ends what belongs to the text, a window over it included, and tells the interactive
/// machinery. Without a session nothing happens.
void leaveText(Instance& instance, BIMSessionRec* session, std::uint8_t keyByte);

}  // namespace quorvane
