#pragma once
// The window of the nib "AnnotationWindow": a panel without a border, filled by one text field.
// What the input method did to it can be read; drawing it is the program's business.

#include <string>

#include "platform/AppKitWindows.h"

namespace quorvane::field {

class AnnotationWindow : public NSPanel, public NSTextField {
 public:
  // As it lies in the nib, in points.
  static constexpr double kWidth = 160, kHeight = 80;

  void orderFront() override {}
  void setLevel(std::int64_t /*level*/) override {}
  void setCollectionBehavior(std::uint64_t /*behavior*/) override {}
  void setStyleMask(std::uint64_t /*mask*/) override {}
  void setFrameTopLeftPoint(NSPoint point) override { topLeft_ = point; }
  void setAlphaValue(double value) override { alpha_ = value; }
  void setStringValue(const std::u16string& text) override { text_ = text; }

  [[nodiscard]] NSPoint topLeft() const { return topLeft_; }
  /// 0: transparent, that is, hidden.
  [[nodiscard]] double alpha() const { return alpha_; }
  [[nodiscard]] const std::u16string& text() const { return text_; }

 private:
  NSPoint topLeft_;
  double alpha_ = 1;
  std::u16string text_;
};

}  // namespace quorvane::field
