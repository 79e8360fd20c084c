#pragma once
// A typed key that is the shortcut of a menu command runs it.

#include "src/base/Instance.h"

namespace quorvane {

// 0: the key ran a command, or has one run behind it while the main application doesn't run; else
// kCommandNotHandled.

/// A key that goes down, matched with `gMacPantherMenu`; any other event isn't handled.
std::int32_t BIMCarbonPencilMenuKeyMatchEventHandler(Instance& instance, const void* ignored,
                                                     EventRef event, const void* ignoredToo);
/// Nothing is matched without a menu; which one it is doesn't matter.
std::int32_t PencilMenuKeyMatchEventHandler(Instance& instance, const void* ignored, EventRef event,
                                            const NSMenu* menu);

}  // namespace quorvane
