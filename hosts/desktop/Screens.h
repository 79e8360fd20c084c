#pragma once

#include "platform/Screens.h"

namespace quorvane::desktop {

/// One screen without a menu bar or a dock.
class Screens final : public quorvane::Screens {
 public:
  explicit Screens(const NSRect& screen) : screen_(screen) {}
  void setFrame(const NSRect& screen) { screen_ = screen; }

  std::span<const NSRect> screens() override { return {&screen_, 1}; }
  NSRect mainScreen() override { return screen_; }
  NSRect HIWindowGetAvailablePositioningBounds() override { return screen_; }
  /// A terminal has no mouse to ask: the middle.
  NSPoint mouseLocation() override {
    return {screen_.x + screen_.width / 2, screen_.y + screen_.height / 2};
  }
  std::int32_t CGShieldingWindowLevel() override { return 2147483628; }
  std::uint32_t CGMainDisplayID() override { return kMainDisplay; }
  NSRect CGDisplayBounds(std::uint32_t display) override {
    return display == kMainDisplay ? screen_ : NSRect{};
  }
  OSStatus GetThemeMenuBarHeight(std::int16_t& height) override {
    height = 0;
    return noErr;
  }

 private:
  static constexpr std::uint32_t kMainDisplay = 1;
  NSRect screen_;
};

}  // namespace quorvane::desktop
