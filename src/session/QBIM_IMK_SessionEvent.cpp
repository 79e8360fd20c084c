#include "src/session/QBIM_IMK_SessionEvent.h"

#include <optional>

#include "src/base/ScreenPoint.h"
#include "src/bridge/Presence.h"
#include "src/bridge/qorv_sharedmem_State.h"
#include "src/menu/MenuKeyMatch.h"
#include "src/menu/MenuState.h"
#include "src/menu/PendingCommand.h"
#include "src/menu/QBIM_IMK_Params.h"
#include "src/session/FixGuard.h"
#include "src/session/QBIM_IMK_CaretMoves.h"
#include "src/session/QBIM_IMK_Clipboard.h"
#include "src/session/QBIM_IMK_KeyTime.h"
#include "src/session/QBIM_IMK_SmartQuotes.h"
#include "src/session/QBIM_IMK_TextBuffer.h"
#include "src/session/QBIM_IMK_WindowCancel.h"
#include "src/session/QBIM_IMK_WindowClick.h"

namespace quorvane {
namespace {

// Keys with one of these never reach the buffer; option and shift alone do.
constexpr std::uint32_t kNotTypingMask =
    kEventKeyModifierFnMask | rightControlKey | controlKey | cmdKey;
// Keys with one of these may be a shortcut; with shift alone none is.
constexpr std::uint32_t kShortcutMask = kNotTypingMask | optionKey | rightOptionKey;
static_assert(kShortcutMask == 0x2D900);
constexpr Seconds kSeparateKey{0.5};

struct Key {
  std::uint8_t byte = 0;
  std::uint32_t modifiers = 0;
};

void noteTime(Instance& instance, Seconds time) {
  auto& state = instance.state<SessionEventState>();
  state.SeparateKeyPress = time > state.LastTimeStampWhenKeyHit + kSeparateKey;
  state.LastTimeStampWhenKeyHit = time;
}

Key readKey(Instance& instance, const CarbonEvent& event, std::uint8_t keyByte) {
  if (event.eventClass != kEventClassKeyboard) return {keyByte, 0};
  noteTime(instance, event.time);
  return {keyByte != 0 ? keyByte : event.kchr.value_or(0), event.kmod.value_or(0)};
}

bool runsCommand(Instance& instance, EventRef event, std::uint32_t modifiers) {
  return (modifiers & kShortcutMask) != 0 &&
         BIMCarbonPencilMenuKeyMatchEventHandler(instance, nullptr, event, nullptr) == 0;
}

std::int32_t handleKeyDown(Instance& instance, BIMSessionRec* session, EventRef event, Key key) {
  if (IsMenuCallEvent(instance) != 0) {
    return DoHandleQorvMenuCommandSequence(instance, key.byte);
  }
  instance.state<SessionEventState>().followed = true;
  if (key.modifiers != 0) {
    Check_Menu_Key_Interactive_Cancel(instance, session, key.modifiers, key.byte);
    const bool reset = Reset_Clip(instance, key.modifiers) != 0;
    if (!reset && runsCommand(instance, event, key.modifiers)) return 1;
  }
  if (leavesText(key.byte, key.modifiers)) {
    leaveText(instance, session, key.byte);
    return 0;
  }
  if ((key.modifiers & kNotTypingMask) != 0) return 0;
  takeTextBack(instance);
  const std::int32_t consumed = Check_SmartQuotes(instance, event, session, key.byte);
  return consumed != 0 ? consumed : BIMHandleInput(instance, session, key.byte);
}

std::int32_t handleKeyEvent(Instance& instance, BIMSessionRec* session, EventRef event,
                            const Key& key) {
  switch (event->kind) {
    case kEventRawKeyDown:
    case kEventRawKeyRepeat:
      return handleKeyDown(instance, session, event, key);
    case kEventRawKeyModifiersChanged:
      DoHandleQorvMenuCommandSequence(instance, 0);
      Reset_Clip(instance, key.modifiers);
      return 0;
    default:
      return 0;
  }
}

// True where the click was taken: the record then stays attached.
bool handleMouseDown(Instance& instance, BIMSessionRec* session, const CarbonEvent& event) {
  if (event.eventClass != kEventClassMouse || event.kind != kEventMouseDown) return false;
  const HIPoint point = event.mloc.value_or(HIPoint{});
  if ((instance.platform().carbonEvents.GetCurrentKeyModifiers() & controlKey) != 0) return false;
  BIMMouseEditCancelSession(instance, session);
  Store_mouseclick_Position_Point(instance, toScreenUnit(point.y), toScreenUnit(point.x));
  BIMCancelWindowSession(instance);
  return true;
}

}  // namespace

std::int32_t BIMSessionEvent(Instance& instance, BIMSessionRec* /*session*/, EventRef event,
                             std::uint8_t keyByte) {
  if (event == nullptr) return 0;
  if (Init_Toolversion(instance) == 0 || isQUORVANEAPP_FRONT(instance) != 0) return 0;
  Init_Toolversion(instance);
  GetAndSetMenuParams3(instance);
  const Key key = readKey(instance, *event, keyByte);
  const SessionsInUse inUse(instance);
  BIMSessionRec* const active = BIMGetActiveSession(instance);
  // Only asked for: a command to a window detaches the record, and finds it gone at times.
  if (!ToolRec(instance)) return 0;
  std::int32_t consumed = RestoreClipboard(instance, active, key.modifiers, key.byte);
  if (consumed == 0 && event->eventClass == kEventClassKeyboard) {
    consumed = handleKeyEvent(instance, active, event, key);
  } else if (consumed == 0 && handleMouseDown(instance, active, *event)) {
    return 0;
  }
  MasterCloseToolRecPtr(instance);
  SetMenuWhenAppChanges(instance);
  return consumed;
}

void Check_Menu_Key_Interactive_Cancel(Instance& instance, BIMSessionRec* session,
                                       std::uint32_t modifiers, std::uint8_t keyByte) {
  if (modifiers != cmdKey || keyByte != 'a') return;
  BIMMouseEditCancelSession(instance, session);
  BIMCancelWindowSession(instance);
}

}  // namespace quorvane
