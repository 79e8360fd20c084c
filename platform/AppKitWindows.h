#pragma once
// The windows that the system draws in itself.

#include <string>

#include "platform/MacTypes.h"

namespace quorvane {

class NSPanel {
 public:
  virtual ~NSPanel() = default;

  virtual void orderFront() = 0;
  virtual void setLevel(std::int64_t level) = 0;
  virtual void setCollectionBehavior(std::uint64_t behavior) = 0;
  virtual void setStyleMask(std::uint64_t mask) = 0;
  virtual void setFrameTopLeftPoint(NSPoint point) = 0;
  /// 0: transparent, 1: opaque.
  virtual void setAlphaValue(double value) = 0;
};

class NSTextField {
 public:
  virtual ~NSTextField() = default;

  /// Lines are divided by line feeds.
  virtual void setStringValue(const std::u16string& text) = 0;
};

}  // namespace quorvane
