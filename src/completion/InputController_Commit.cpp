// The two buffers, and everything that goes to the client: marked text while the word is typed, and
// the final insertion. A commit goes straight to the client and doesn't pass the session.

#include <utility>

#include "src/completion/AnnotationWinController.h"
#include "src/completion/InputController.h"
#include "src/completion/LowByteCharacter.h"
#include "src/session/FixGuard.h"

namespace quorvane {
namespace {

constexpr NSRange kUnspecified{NSNotFound, NSNotFound};

}  // namespace

void InputController::originalBufferAppend(const std::u16string& text, IMKTextInput* /*client*/) {
  _originalBuffer += text;
  ++_insertionIndex;  // a letter, however many units it has
  showPreeditString(_originalBuffer);
}

// The typed part always looks exactly as typed, also where the word list has other capitals.
void InputController::showPreeditString(const std::u16string& text) {
  Platform& platform = instance_.platform();
  const auto attributes =
      platform.inputMethodKit.markForStyle(*this, kSelectedRawText, {0, text.size()});
  const NSRange end{text.size(), 0};
  std::u16string shown = text;
  const std::u16string lowered = platform.characterSets.lowercaseString(text);
  if (lowered.starts_with(platform.characterSets.lowercaseString(_originalBuffer))) {
    // Throws where lowering has changed the lengths so that the text is the shorter one.
    shown = _originalBuffer + text.substr(_originalBuffer.size());
  }
  if (_currentClient == nullptr) return;
  _currentClient->setMarkedText({std::move(shown), attributes}, end, kUnspecified);
}

void InputController::cancelComposition() {
  instance_.platform().inputMethodKit.cancelComposition(*this);
}

void InputController::commitComposition(IMKTextInput* sender) {
  std::u16string text = chosenText();
  if (preference("commitWordWithSpace") && takesSpace(text)) text += u' ';
  insertAndReset(text, sender);
}

void InputController::commitComposition_withoutspace(IMKTextInput* sender) {
  insertAndReset(std::u16string(chosenText()), sender);
}

void InputController::keepTyped() {
  if (_originalBuffer.empty()) return;
  insertAndReset(std::u16string(_originalBuffer), _currentClient);
  instance_.platform().inputMethodKit.ownTextFollows();
}

void InputController::do_CancelAutoCompleteSession() {
  cancelComposition();
  if (_annotationWin != nullptr) _annotationWin->hideWindow();
  reset();
}

void InputController::do_Cancel_AutoCompleteSession_withoutspace() {
  if (panelVisible()) commitComposition_withoutspace(Get_Last_Client(instance_));
}

void InputController::reset() {
  setComposedBuffer({});
  setOriginalBuffer({});
  _insertionIndex = 0;
  _currentCandidateIndex = 1;
  IMKCandidates* const panel = sharedCandidates();
  if (panel != nullptr) {
    panel->clearSelection();
    panel->hide();
  }
  _candidates.clear();
  if (panel != nullptr) panel->setCandidateData({});
  if (_annotationWin != nullptr) _annotationWin->hideWindow();
}

const std::u16string& InputController::chosenText() const {
  return _composedBuffer.empty() ? _originalBuffer : _composedBuffer;
}

// Never behind a number, nor where the word is cut short by an apostrophe.
bool InputController::takesSpace(const std::u16string& text) const {
  if (text.empty()) return false;
  const LowByteCharacter first(text, 0);
  const LowByteCharacter last(text, text.size() - 1);
  return !instance_.platform().characterSets.decimalDigitCharacterSet(first.widened()) &&
         last.value() != '\'';
}

void InputController::insertAndReset(const std::u16string& text, IMKTextInput* sender) {
  if (text != _originalBuffer + _keyText) losePlaceInSession();
  if (sender != nullptr) sender->insertText(text, kUnspecified);
  reset();
}

// It followed the keys, and the document goes another way.
void InputController::losePlaceInSession() {
  takeTextBack(instance_);
  losePlace(BIMGetActiveSession(instance_));
}

}  // namespace quorvane
