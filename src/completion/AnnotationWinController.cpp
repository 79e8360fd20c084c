#include "src/completion/AnnotationWinController.h"

#include "src/base/Log.h"

namespace quorvane {
namespace {

constexpr std::int32_t kWidth = 160;
constexpr std::uint64_t kCanJoinAllSpaces = 1;
constexpr std::uint64_t kBorderless = 0;
constexpr Seconds kHideDelay{0.01};

}  // namespace

AnnotationWinController* AnnotationWinController::sharedController(Instance& instance) {
  return instance.state<AnnotationWinState>().sharedController;
}

void AnnotationWinController::awakeFromNib() {
  instance_.state<AnnotationWinState>().sharedController = this;
  setWidth(kWidth);
  Log(instance_, "AnnotationWinController awakeFromNib");
  hideWindow();
  preparePanel();
  instance_.platform().runLoop.performAfterDelay(
      [this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) hideWindow();
      },
      kHideDelay);
}

void AnnotationWinController::preparePanel() {
  if (panel_ == nullptr) return;
  panel_->orderFront();
  // Above everything, the shields of full-screen applications included.
  panel_->setLevel(std::int64_t{instance_.platform().screens.CGShieldingWindowLevel()} + 1);
  panel_->setCollectionBehavior(kCanJoinAllSpaces);
  panel_->setStyleMask(kBorderless);
}

void AnnotationWinController::showWindow(NSPoint topLeft) {
  if (panel_ == nullptr) return;
  panel_->setFrameTopLeftPoint(topLeft);
  panel_->setAlphaValue(1.0);
}

void AnnotationWinController::hideWindow() {
  if (panel_ != nullptr) panel_->setAlphaValue(0.0);
}

void AnnotationWinController::setAnnotation(const std::u16string& text) {
  Log(instance_, "setAnnotation ", Private{text});
  if (view_ != nullptr) view_->setStringValue(text);
}

}  // namespace quorvane
