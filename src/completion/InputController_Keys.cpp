// What each key does while a word is being typed.

#include <algorithm>
#include <limits>

#include "src/base/Log.h"
#include "src/base/VirtualKeys.h"
#include "src/completion/InputController.h"
#include "src/completion/LowByteCharacter.h"

namespace quorvane {
namespace {

enum class Text { None, Some, Any };

constexpr std::int64_t kCandidatesAPage = 9;

// The panel's arrows. Only the column's rows are counted.
struct PanelMove {
  IMKCandidatePanelType panelType;
  std::uint16_t keyCode;
  void (IMKCandidates::*move)(IMKInputController*);
  std::int64_t step;
};
constexpr std::array<PanelMove, 4> kPanelMoves{{
    {IMKCandidatePanelType::SingleColumnScrolling, kVK_DownArrow, &IMKCandidates::moveDown, 1},
    {IMKCandidatePanelType::SingleColumnScrolling, kVK_UpArrow, &IMKCandidates::moveUp, -1},
    {IMKCandidatePanelType::SingleRowStepping, kVK_RightArrow, &IMKCandidates::moveRight, 0},
    {IMKCandidatePanelType::SingleRowStepping, kVK_LeftArrow, &IMKCandidates::moveLeft, 0},
}};

bool isDigit(Instance& instance, const LowByteCharacter& character) {
  return instance.platform().characterSets.decimalDigitCharacterSet(character.widened());
}

bool isMark(Instance& instance, const LowByteCharacter& character) {
  CharacterSets& sets = instance.platform().characterSets;
  return sets.punctuationCharacterSet(character.widened()) ||
         sets.symbolCharacterSet(character.widened());
}

// The text's first character has the low byte of a digit: no space and no sign stands in front.
std::int64_t intValue(const std::u16string& text) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
  std::int64_t value = 0;
  for (const char16_t character : text) {
    if (character < u'0' || character > u'9') break;
    value = std::min(value * 10 + (character - u'0'), kMost);
  }
  return value;
}

}  // namespace

struct InputController::KeyRow {
  std::uint16_t keyCode;
  Text text;
  bool (InputController::*action)(const NSEvent&, IMKTextInput*);
};

const std::array<InputController::KeyRow, 7> InputController::kKeyRows{{
    {kVK_Delete, Text::Some, &InputController::deleteLetter},
    {kVK_Delete, Text::None, &InputController::passOn},
    {kVK_Return, Text::None, &InputController::passOn},
    {kVK_Space, Text::None, &InputController::passOn},
    {kVK_Return, Text::Some, &InputController::commitByReturn},
    {kVK_Space, Text::Some, &InputController::commitBySpace},
    {kVK_Escape, Text::Any, &InputController::keepWord},
}};

bool InputController::onKeyEvent(const NSEvent& event, IMKTextInput* client) {
  const bool composing = !_originalBuffer.empty();
  _keyText = event.keyCode == kVK_Escape ? std::u16string{} : event.characters;
  const bool consumed = useKey(event, client);
  _keyText.clear();
  if (composing && !consumed) losePlaceInSession();
  return consumed;
}

bool InputController::useKey(const NSEvent& event, IMKTextInput* client) {
  _currentClient = client;
  const Text text = _originalBuffer.empty() ? Text::None : Text::Some;
  for (const KeyRow& row : kKeyRows) {
    const bool matches = row.text == Text::Any || row.text == text;
    if (matches && row.keyCode == event.keyCode) return (this->*row.action)(event, client);
  }
  const LowByteCharacter character(event.characters, 0);
  if (character.isLetter()) return acceptLetter(event, client);
  if (isMojaveAndLaterSystem()) {
    const auto consumed = arrowOrDigit(event, client);
    if (consumed) return *consumed;
  }
  return text == Text::Some && isMark(instance_, character) && commitWithCharacters(event, client);
}

std::optional<bool> InputController::arrowOrDigit(const NSEvent& event, IMKTextInput* client) {
  const bool visible = panelVisible();
  if (visible && moveInPanel(event.keyCode)) return false;
  if (!isDigit(instance_, LowByteCharacter(event.characters, 0))) return std::nullopt;
  if (_originalBuffer.empty()) return commitWithCharacters(event, client);
  if (!visible) return std::nullopt;
  return selectByDigit(event, client);
}

bool InputController::passOn(const NSEvent& /*event*/, IMKTextInput* /*client*/) { return false; }

bool InputController::deleteLetter(const NSEvent& /*event*/, IMKTextInput* client) {
  return deleteBackward(client);
}

bool InputController::commitByReturn(const NSEvent& /*event*/, IMKTextInput* client) {
  Log(instance_, "commit by Return ", Private{_originalBuffer});
  commitComposition(client);
  return true;
}

bool InputController::commitBySpace(const NSEvent& event, IMKTextInput* client) {
  Log(instance_, "commit by Space ", Private{_originalBuffer});
  if (!preference("commitWordWithSpace")) appendToComposedBuffer(event.characters);
  commitComposition(client);
  return true;
}

// Escape keeps what was typed or chosen, and is consumed with nothing typed too.
bool InputController::keepWord(const NSEvent& /*event*/, IMKTextInput* client) {
  cancelComposition();
  commitComposition_withoutspace(client);
  return true;
}

bool InputController::acceptLetter(const NSEvent& event, IMKTextInput* client) {
  originalBufferAppend(event.characters, client);
  refreshPanel();
  return true;
}

bool InputController::commitWithCharacters(const NSEvent& event, IMKTextInput* client) {
  appendToComposedBuffer(event.characters);
  commitComposition(client);
  return true;
}

std::size_t InputController::candidateOfDigit(std::int64_t digit) const {
  const std::int64_t counter = _currentCandidateIndex;
  const std::int64_t page =
      counter > kCandidatesAPage
          ? kCandidatesAPage * (counter / kCandidatesAPage - 1) + counter % kCandidatesAPage
          : 0;
  return static_cast<std::size_t>(page + digit - 1);
}

bool InputController::selectByDigit(const NSEvent& event, IMKTextInput* client) {
  const std::u16string word = _candidates.at(candidateOfDigit(intValue(event.characters)));
  cancelComposition();
  setComposedBuffer(word);
  setOriginalBuffer(word);
  commitComposition(client);
  return true;
}

bool InputController::moveInPanel(std::uint16_t keyCode) {
  IMKCandidates& panel = *sharedCandidates();
  for (const PanelMove& row : kPanelMoves) {
    if (row.panelType != panel.panelType() || row.keyCode != keyCode) continue;
    (panel.*row.move)(this);
    _currentCandidateIndex += row.step;
    return true;
  }
  return false;
}

void InputController::refreshPanel() {
  IMKCandidates* const panel = sharedCandidates();
  if (panel == nullptr) return;
  panel->updateCandidates();
  panel->show(kIMKLocateCandidatesBelowHint);
}

bool InputController::deleteBackward(IMKTextInput* /*client*/) {
  if (_insertionIndex < 1) return false;
  --_insertionIndex;
  std::u16string shortened = _originalBuffer;
  if (!shortened.empty()) shortened.pop_back();
  setComposedBuffer(shortened);
  setOriginalBuffer(shortened);
  showPreeditString(shortened);
  if (shortened.empty()) {
    reset();
  } else {
    refreshPanel();
  }
  return true;
}

}  // namespace quorvane
