#pragma once

#include "platform/Screens.h"

namespace quorvane::desktop {

/// One screen without a menu bar or a dock.
class Screens final : public quorvane::Screens {
 public:
  explicit Screens(const NSRect& screen) : screen_(screen) {}

  std::span<const NSRect> screens() override { return {&screen_, 1}; }
  NSRect HIWindowGetAvailablePositioningBounds() override { return screen_; }

 private:
  NSRect screen_;
};

}  // namespace quorvane::desktop
