// What the candidates panel asks and tells, and the annotation beside it.

#include <cmath>

#include "src/completion/AnnotationWinController.h"
#include "src/completion/CompletionState.h"
#include "src/completion/ConversionEngine.h"
#include "src/completion/InputController.h"
#include "src/completion/NSScreen_PointConversion.h"
#include "src/session/QBIM_IMK_WindowCancel.h"

namespace quorvane {
namespace {

constexpr int kMargin = 20;
constexpr double kGapBelowLine = 8;
constexpr double kGapAboveLine = 3;

// The main application's window gives way to the panel.
void Hide_InteractiveWindow(Instance& instance) { Cancel_Iteractive_Window(instance); }

}  // namespace

std::vector<std::u16string> InputController::candidates(IMKTextInput* /*sender*/) {
  ConversionEngine* const engine = instance_.state<CompletionState>().engine;
  if (engine == nullptr) return {};
  _candidates = engine->getCandidates(_originalBuffer);
  return _candidates;
}

void InputController::_updateComposedBuffer(const NSAttributedString& candidate) {
  setComposedBuffer(candidate.string);
}

void InputController::candidateSelectionChanged(const NSAttributedString& candidate) {
  Hide_InteractiveWindow(instance_);
  _updateComposedBuffer(candidate);
  showPreeditString(candidate.string);
  _insertionIndex = static_cast<std::int64_t>(candidate.string.size());
  if (preference("showTranslation")) showAnnotation(candidate);
}

void InputController::candidateSelected(const NSAttributedString& candidate) {
  _updateComposedBuffer(candidate);
  commitComposition(_currentClient);
}

void InputController::showAnnotation(const NSAttributedString& candidate) {
  ConversionEngine* const engine = instance_.state<CompletionState>().engine;
  if (engine == nullptr || _annotationWin == nullptr) return;
  const std::u16string annotation = engine->getAnnotation(candidate.string);
  if (annotation.empty()) return _annotationWin->hideWindow();
  _annotationWin->setAnnotation(annotation);
  _annotationWin->showWindow(calculatePositionOfTranslationWindow());
}

// The mouse's screen counts, not the text's. Without a screen all its numbers are zero, and the
// window goes to a negative place.
NSPoint InputController::calculatePositionOfTranslationWindow() {
  const IMKCandidates* const candidates = sharedCandidates();
  const NSRect panel = candidates != nullptr ? candidates->candidateFrame() : NSRect{};
  NSRect line;
  if (_currentClient != nullptr) _currentClient->attributesForCharacterIndex(0, line);
  const auto screen = currentScreenForMouseLocation(instance_);
  const NSPoint cursor =
      screen ? convertPointToScreenCoordinates(*screen, {line.x, line.y}) : NSPoint{};
  // Whole numbers, cut towards zero.
  const double screenWidth = screen ? std::trunc(screen->width) : 0;
  const double span = (_annotationWin != nullptr ? _annotationWin->width() : 0) + kMargin;
  const double lineHeight = std::trunc(line.height);

  NSPoint result{line.x + panel.width, line.y};
  const double room = screenWidth - cursor.x;
  const bool panelFits = room >= panel.width;
  if (!panelFits) {
    result.x = screenWidth - panel.width - span;
  } else if (room < panel.width + span) {
    result.x = result.x - panel.width - span;
  }
  result.y += cursor.y >= panel.height ? -kGapBelowLine : panel.height + lineHeight + kGapAboveLine;
  return result;
}

}  // namespace quorvane
