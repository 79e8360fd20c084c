#include "src/completion/InputController.h"

#include "src/base/Log.h"
#include "src/bridge/Presence.h"
#include "src/completion/AnnotationWinController.h"
#include "src/completion/CompletionState.h"
#include "src/menu/CurrentAppFlags.h"
#include "src/session/QBIM_IMK_SessionRecord.h"
#include "src/session/QuorvaneInputController.h"

namespace quorvane {
namespace {

constexpr auto kFlagsChanged = static_cast<std::uint64_t>(NSEventType::FlagsChanged);

}  // namespace

InputController::InputController(Instance& instance)
    : instance_(instance), words_(instance.state<WordInProgressState>()) {}

InputController::~InputController() {
  if (words_.latest == this) words_.latest = nullptr;
}

bool InputController::handleEvent(const NSEvent& event, IMKTextInput* client) {
  instance_.state<InputControllerState>().lastClient = client;
  words_.latest = this;
  Log(instance_, "handleEvent ", static_cast<std::uint32_t>(event.type));
  if (sessionTakes(event, client)) return true;
  if (!mayComplete()) return false;
  if (isRepeatedFlagsChange(event)) return true;
  const bool consumed = dispatch(event, client);
  remember(event);
  return consumed;
}

// It writes into the document itself: a word whose gate has closed since the last event ends first.
bool InputController::sessionTakes(const NSEvent& event, IMKTextInput* client) {
  words_.held = !_originalBuffer.empty() && mayComplete();
  return do_handleEvent(instance_, event, client);
}

// The gates see the current state at every event.
bool InputController::mayComplete() {
  const bool open = isSwitchedOn() && !givesWay() && IsQUORVANEAPPRUNNING(instance_) != 0;
  if (!open) keepTyped();
  return open;
}

bool InputController::isSwitchedOn() const {
  const bool on = (Get_InteractiveCheck_Status(instance_) & kCompletionFlag) != 0;
  if (!on) Log(instance_, " ************* InteractiveAutoCompleteMask  NOTENABLED");
  return on;
}

bool InputController::givesWay() {
  if (!do_AutoCompleteCancelWindow(instance_)) return false;
  keepTyped();
  cancelComposition();
  reset();
  Log(instance_, " ************* do_AutoCompleteCancelWindow");
  return true;
}

bool InputController::dispatch(const NSEvent& event, IMKTextInput* client) {
  switch (event.type) {
    case NSEventType::LeftMouseDown:
      cancelComposition();
      commitComposition_withoutspace(client);
      return false;
    case NSEventType::KeyDown:
      return !_defaultEnglishMode && (event.modifierFlags & NSEventModifierFlagCommand) == 0 &&
             onKeyEvent(event, client);
    case NSEventType::FlagsChanged:
      if (isShiftTap(event) && preference("ShiftKeyToggle")) toggleEnglishMode(client);
      return false;
    default:
      return false;
  }
}

// It is consumed and stays out of the history.
bool InputController::isRepeatedFlagsChange(const NSEvent& event) const {
  return event.type == NSEventType::FlagsChanged && _lastEventTypes[1] == kFlagsChanged &&
         _lastModifiers[1] == event.modifierFlags;
}

// Shift by itself, pressed and let go with no other event between.
bool InputController::isShiftTap(const NSEvent& event) const {
  return event.modifierFlags == 0 && _lastEventTypes[1] == kFlagsChanged &&
         _lastModifiers[1] == NSEventModifierFlagShift &&
         (_lastModifiers[0] & NSEventModifierFlagShift) == 0;
}

void InputController::toggleEnglishMode(IMKTextInput* client) {
  _defaultEnglishMode = !_defaultEnglishMode;
  if (!_defaultEnglishMode || _originalBuffer.empty()) return;
  cancelComposition();
  commitComposition(client);
}

void InputController::remember(const NSEvent& event) {
  _lastModifiers = {_lastModifiers[1], event.modifierFlags};
  _lastEventTypes = {_lastEventTypes[1], static_cast<std::uint64_t>(event.type)};
}

void InputController::activateServer(IMKTextInput* sender) {
  if (_annotationWin == nullptr) {
    _annotationWin = AnnotationWinController::sharedController(instance_);
  }
  _currentCandidateIndex = 1;
  _candidates.clear();
  Log(instance_, "activateServer ", static_cast<std::uint32_t>(identityOf(sender)));
  do_activateServer1(instance_, sender);
}

// Marked text isn't committed: the buffers are cleared, no more.
void InputController::deactivateServer(IMKTextInput* sender) {
  reset();
  Log(instance_, "deactivateServer ", static_cast<std::uint32_t>(identityOf(sender)));
  do_deactivateServer1(instance_, sender);
}

std::uint32_t InputController::recognizedEvents(IMKTextInput* /*sender*/) {
  return kRecognizedEvents;
}

bool InputController::isMojaveAndLaterSystem() const {
  const auto version = instance_.platform().application.operatingSystemVersion();
  return version.majorVersion > 10 || (version.majorVersion == 10 && version.minorVersion > 13);
}

bool InputController::preference(std::string_view key) const {
  UserDefaults* const defaults = instance_.state<CompletionState>().preference;
  return defaults != nullptr && defaults->boolForKey(key);
}

IMKCandidates* InputController::sharedCandidates() const {
  return instance_.state<CompletionState>().sharedCandidates.get();
}

bool InputController::panelVisible() const {
  const IMKCandidates* const panel = sharedCandidates();
  return panel != nullptr && panel->isVisible();
}

}  // namespace quorvane
