#pragma once
// The main application's wish to be left alone: so many key presses of one session.

#include "src/bridge/qorv_sharedmem.h"

namespace quorvane {

/// The main application wants to hear of every key again.
void endSuspension(const ToolRec& record);

}  // namespace quorvane
