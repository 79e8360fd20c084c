#pragma once
// The step behind every change of the buffer: publish the text, and at the right moments have the
// main application look at it.

#include "src/session/QBIM_IMK_SessionRecord.h"

namespace quorvane {

/// After each key. 1: it ended early, while suspended or at a key that calls for no scan.
/// `letterDeleted` isn't read; callers pass it all the same.
std::int32_t CallInteractiveEventHandler(Instance& instance, BIMSessionRec* session,
                                         std::uint8_t keyByte, bool letterDeleted);

}  // namespace quorvane
