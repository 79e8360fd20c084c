#pragma once
// NSScreen(PointConversion): points relative to one screen. A screen is given by its frame.

#include <optional>

#include "src/base/Instance.h"

namespace quorvane {

/// The first screen that holds the mouse; none where no screen does.
std::optional<NSRect> currentScreenForMouseLocation(Instance& instance);
/// `point` relative to the screen, in single precision.
NSPoint convertPointToScreenCoordinates(const NSRect& screen, NSPoint point);
NSPoint flipPoint(const NSRect& screen, NSPoint point);

}  // namespace quorvane
