#pragma once
// The main application's wish to be left alone: so many key presses of one session.

#include "src/base/Process.h"

namespace quorvane {

/// The main application wants to hear of every key again. Only inside a ToolRec.
void endSuspension(Process& process);

}  // namespace quorvane
