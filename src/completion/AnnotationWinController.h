#pragma once
// The small window beside the candidates panel. It is always on screen: showing and hiding it mean
// making it opaque and transparent.

#include <memory>
#include <string>

#include "src/base/Instance.h"

namespace quorvane {

class AnnotationWinController {
 public:
  explicit AnnotationWinController(Instance& instance) : instance_(instance) {}

  /// Null until the nib has woken.
  static AnnotationWinController* sharedController(Instance& instance);
  void awakeFromNib();

  /// `topLeft` in screen points.
  void showWindow(NSPoint topLeft);
  void hideWindow();
  void setAnnotation(const std::u16string& text);

  // The nib's outlets; null where it has no such object. Not owned.
  [[nodiscard]] NSTextField* view() const { return view_; }
  void setView(NSTextField* view) { view_ = view; }
  [[nodiscard]] NSPanel* panel() const { return panel_; }
  void setPanel(NSPanel* panel) { panel_ = panel; }

  // In points. Nothing sets the height.
  [[nodiscard]] std::int32_t width() const { return _width; }
  void setWidth(std::int32_t width) { _width = width; }
  [[nodiscard]] std::int32_t height() const { return _height; }
  void setHeight(std::int32_t height) { _height = height; }

 private:
  void preparePanel();

  Instance& instance_;
  std::int32_t _width = 0;
  std::int32_t _height = 0;
  NSTextField* view_ = nullptr;
  NSPanel* panel_ = nullptr;
  /// The run loop may outlive the window: the delayed call then finds this gone.
  std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

struct AnnotationWinState {
  AnnotationWinController* sharedController = nullptr;
};

}  // namespace quorvane
