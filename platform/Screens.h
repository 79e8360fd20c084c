#pragma once
// NSScreen, the part of the main screen that windows may use, and the mouse on it.

#include <span>

#include "platform/MacTypes.h"

namespace quorvane {

class Screens {
 public:
  virtual ~Screens() = default;

  /// Frames, origin at the bottom left of the first. May be empty.
  virtual std::span<const NSRect> screens() = 0;
  /// The frame of the one with the keyboard focus; empty where there is none.
  virtual NSRect mainScreen() = 0;
  /// In screen pixels, origin at the top left.
  virtual NSRect HIWindowGetAvailablePositioningBounds() = 0;
  /// +[NSEvent mouseLocation], in the coordinates of `screens`.
  virtual NSPoint mouseLocation() = 0;
  virtual std::int32_t CGShieldingWindowLevel() = 0;
  virtual std::uint32_t CGMainDisplayID() = 0;
  /// Empty for a display that isn't there.
  virtual NSRect CGDisplayBounds(std::uint32_t display) = 0;
  /// In screen points.
  virtual OSStatus GetThemeMenuBarHeight(std::int16_t& height) = 0;
};

}  // namespace quorvane
