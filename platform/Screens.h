#pragma once
// NSScreen and the part of the main screen that windows may use.

#include <span>

#include "platform/MacTypes.h"

namespace quorvane {

class Screens {
 public:
  virtual ~Screens() = default;

  /// Frames, origin at the bottom left of the first. May be empty.
  virtual std::span<const NSRect> screens() = 0;
  /// In screen pixels, origin at the top left.
  virtual NSRect HIWindowGetAvailablePositioningBounds() = 0;
};

}  // namespace quorvane
