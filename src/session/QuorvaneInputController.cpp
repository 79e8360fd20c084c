#include "src/session/QuorvaneInputController.h"

#include <utility>

#include "src/base/KeyBytes.h"
#include "src/base/Log.h"
#include "src/base/Modifiers.h"
#include "src/base/Text.h"
#include "src/bridge/Presence.h"
#include "src/bridge/qorv_sharedmem_State.h"
#include "src/menu/MenuCommand.h"
#include "src/session/CommandSelection.h"
#include "src/session/FixGuard.h"
#include "src/session/QBIM_IMK_KeyTime.h"
#include "src/session/QBIM_IMK_SessionEvent.h"
#include "src/session/QBIM_IMK_Sessions.h"
#include "src/session/QBIM_IMK_WindowClick.h"
#include "src/session/QBIM_IMK_WindowKeys.h"
#include "src/session/QuorvaneInputController_TextPosition.h"

namespace quorvane {
namespace {

// A shifted letter counts as a plain key: shift is left out of the key path.
std::uint32_t keyPathMask(std::uint32_t flags) {
  return classicModifiers(flags & ~(NSEventModifierFlagShift | NSEventModifierFlagFunction));
}

std::uint32_t flagsChangedMask(std::uint32_t flags) {
  return classicModifiers(flags & ~NSEventModifierFlagFunction);
}

// The client's keys are its own: the tool isn't busy and the main application doesn't take input.
bool admits(Instance& instance, IMKTextInput* client) {
  if (IS_TOOL_BUSY(instance) != 0) {
    Set_ToolCRecPtr_unusedx2(instance, 0);
    Log(instance, " TOOLBUSY handleEvent");
    return false;
  }
  if (Do_Check_Quorvane_App_Input(instance, identityOf(client)) != 0) {
    Log(instance, "QorvWindow ", identityOf(client));
    return false;
  }
  return true;
}

// A switch of applications is none of its business.
bool reachesText(const NSEvent& event) {
  const bool switches = (event.modifierFlags & NSEventModifierFlagCommand) != 0 &&
                        firstUtf8Byte(event.characters) == kTabKey;
  return event.type == NSEventType::LeftMouseDown ||
         (event.type == NSEventType::KeyDown && !switches);
}

// A click, or a key that the session doesn't see.
void leaveBehind(Instance& instance, ClientID client) {
  takeTextBack(instance);
  for (const auto& session : instance.state<SessionState>().records) {
    if (session->clientID == client) losePlace(session.get());
  }
}

}  // namespace

QuorvaneInputController& Get_QuorvaneInputController(Instance& instance) {
  return instance.state<QuorvaneInputController>();
}

bool do_handleEvent(Instance& instance, const NSEvent& event, IMKTextInput* client) {
  return Get_QuorvaneInputController(instance).handleEvent(event, client);
}

bool QuorvaneInputController::handleEvent(const NSEvent& event, IMKTextInput* client) {
  guardCommandSelection(instance_, event, client);
  auto& followed = instance_.state<SessionEventState>().followed;
  const bool outer = std::exchange(followed, false);
  const bool consumed = handleInTurn(event, client);
  if (!consumed && !followed && reachesText(event)) leaveBehind(instance_, identityOf(client));
  followed = outer;
  return consumed;
}

bool QuorvaneInputController::handleInTurn(const NSEvent& event, IMKTextInput* client) {
  auto& state = instance_.state<ControllerState>();
  cancel_keyDownEvent(instance_);
  if (state.KEYED_INITED_FLAG != 0 && event.type == NSEventType::KeyDown) {
    state.KEYED_INITED_FLAG = 0;
    return true;
  }
  if (state.INITED_FLAG == 0) {
    Log(instance_, " !INITED_FLAG");
    return false;
  }
  loadPressAndHold();
  state.lastClient = client;
  commitComposition(client);
  if (!admits(instance_, client)) return false;
  Get_SessionHandleFromID(instance_, identityOf(client));
  if (client != state.lastClient) {
    // Only where an event of another client came in since: a change of client leaves the buffer.
    const std::u16string empty;
    setComposedBuffer(&empty);
  }
  state.lastClient = client;
  if (state.handleEvent_BUSY != 0) {
    Log(instance_, " handleEvent_BUSY");
    return false;
  }
  FlagGuard busy(state.handleEvent_BUSY);
  return dispatch(event, client);
}

bool QuorvaneInputController::dispatch(const NSEvent& event, IMKTextInput* client) {
  switch (event.type) {
    case NSEventType::LeftMouseDown:
      Get_MouseDown_Cancel(instance_);
      return false;
    case NSEventType::KeyDown:
    case NSEventType::KeyUp:
      return handleKey(event, client);
    case NSEventType::FlagsChanged:
      return handleFlagsChanged(event);
    default:
      return false;
  }
}

bool QuorvaneInputController::handleKey(const NSEvent& event, IMKTextInput* client) {
  const std::uint8_t keyByte = firstUtf8Byte(event.characters);
  Send_Complete_Event(instance_, 202, event.keyCode, event.characters, client);
  const EventRef eventRef = CreateKeyEventFromNSEvent(event);
  if (eventRef == nullptr) return false;
  Grab_Text_Position(instance_, keyByte, client);
  const std::uint32_t mask = keyPathMask(event.modifierFlags);
  if (mask == 0) instance_.state<ControllerState>().Event_keyDownEvent = 1;
  if ((mask & cmdKey) != 0 && keyByte == kTabKey) return false;
  return Check_IntractiveWindowKeys3(instance_, keyByte) != 0 ||
         BIMSessionEvent(instance_, nullptr, eventRef, keyByte) != 0;
}

bool QuorvaneInputController::handleFlagsChanged(const NSEvent& event) {
  const std::uint32_t mask = flagsChangedMask(event.modifierFlags);
  if (Check_InteractiveWindowKeys2(instance_, mask) != 0) return true;
  CarbonEvent carbon;
  Platform& platform = instance_.platform();
  if (!platform.carbonEvents.CreateEvent(kEventClassKeyboard, kEventRawKeyModifiersChanged,
                                         platform.clock.GetCurrentEventTime(), carbon)) {
    return false;
  }
  carbon.kcod = event.keyCode;
  carbon.kmod = mask;
  carbon.kchr = std::uint8_t{0};
  return BIMSessionEvent(instance_, nullptr, &carbon, 0) != 0;
}

std::uint32_t QuorvaneInputController::recognizedEvents(IMKTextInput* /*sender*/) {
  return kRecognizedEvents;
}

void QuorvaneInputController::setComposedBuffer(const std::u16string* text) {
  if (text != nullptr) commit_._composedBuffer = *text;
}

void QuorvaneInputController::setOriginalBuffer(const std::u16string* text) {
  if (text != nullptr) commit_._originalBuffer = *text;
}

void QuorvaneInputController::originalBufferAppend(const std::u16string& text,
                                                   IMKTextInput& client) {
  commit_._originalBuffer += text;
  ++commit_._insertionIndex;
  client.setMarkedText(commit_._originalBuffer, {0, commit_._originalBuffer.size()},
                       {NSNotFound, NSNotFound});
}

void QuorvaneInputController::commitComposition(IMKTextInput* sender) {
  if (instance_.state<ControllerState>().INITED_FLAG == 0 || sender == nullptr) return;
  commitParked(instance_, *sender);
}

void QuorvaneInputController::SubMenuActions(const IMKCommandDictionary& sender) {
  quorvane::SubMenuActions(instance_, sender);
}

void QuorvaneInputController::dealloc() {
  DeleteSessionHandleID(instance_, identityOf(_currentClient));
  Check_App_HouseKeeping(instance_);
}

EventRef CreateKeyEventFromNSEvent(const NSEvent& event) { return event.eventRef; }

std::int32_t Send_Complete_Event(Instance& instance, std::int32_t /*kind*/,
                                 std::uint16_t /*keyCode*/, const std::u16string& /*characters*/,
                                 IMKTextInput* /*client*/) {
  static_cast<void>(isQUORVANEAPP_FRONT(instance));
  return 0;
}

void loadPressAndHold() {}

void set_INITED_FLAG(Instance& instance, std::uint32_t value) {
  instance.state<ControllerState>().INITED_FLAG = value;
}

void cancel_keyDownEvent(Instance& instance) {
  instance.state<ControllerState>().Event_keyDownEvent = 0;
}

IMKTextInput* GetLastClient(Instance& instance) {
  return instance.state<ControllerState>().lastClient;
}

}  // namespace quorvane
