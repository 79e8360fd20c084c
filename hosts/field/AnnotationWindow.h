#pragma once
// The window of the nib "AnnotationWindow": a panel without a border, filled by one text field.
// What the input method did to it can be read; drawing it is the program's business.

#include <string>

#include "hosts/journal/Journal.h"
#include "platform/AppKitWindows.h"

namespace quorvane::field {

class AnnotationWindow : public NSPanel, public NSTextField {
 public:
  // As it lies in the nib, in points.
  static constexpr double kWidth = 160, kHeight = 80;

  explicit AnnotationWindow(Journal* journal = nullptr) : journal_(journal) {}

  void orderFront() override { record(journal_, "NSPanel orderFront"); }
  void setLevel(std::int64_t level) override { record(journal_, "NSPanel setLevel ", level); }
  void setCollectionBehavior(std::uint64_t behavior) override {
    record(journal_, "NSPanel setCollectionBehavior ", behavior);
  }
  void setStyleMask(std::uint64_t mask) override {
    record(journal_, "NSPanel setStyleMask ", mask);
  }
  void setFrameTopLeftPoint(NSPoint point) override {
    record(journal_, "NSPanel setFrameTopLeftPoint ", point.x, " ", point.y);
    topLeft_ = point;
  }
  void setAlphaValue(double value) override {
    record(journal_, "NSPanel setAlphaValue ", value);
    alpha_ = value;
  }
  void setStringValue(const std::u16string& text) override {
    record(journal_, "NSTextField setStringValue");
    text_ = text;
  }

  [[nodiscard]] NSPoint topLeft() const { return topLeft_; }
  /// 0: transparent, that is, hidden.
  [[nodiscard]] double alpha() const { return alpha_; }
  [[nodiscard]] const std::u16string& text() const { return text_; }

 private:
  Journal* journal_;  ///< of what the logic calls; null: none
  NSPoint topLeft_;
  double alpha_ = 1;
  std::u16string text_;
};

}  // namespace quorvane::field
