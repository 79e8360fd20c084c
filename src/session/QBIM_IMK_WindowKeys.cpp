#include "src/session/QBIM_IMK_WindowKeys.h"

#include <optional>
#include <string_view>

#include "src/base/KeyBytes.h"
#include "src/base/Log.h"
#include "src/bridge/Presence.h"
#include "src/bridge/ToolCalls.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/menu/PendingCommand.h"
#include "src/session/QBIM_IMK_KeyTime.h"
#include "src/session/QBIM_IMK_WindowCancel.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kPopupTakesNoKeys = 0x400;  // of field 7

bool isDigit(std::uint8_t keyByte) { return keyByte >= '0' && keyByte <= '9'; }

// What the main application has left of the key; the key itself where there is no record any more.
std::uint32_t answerTo(Instance& instance, std::uint8_t keyByte) {
  const ToolRec record(instance);
  return record ? record.get(ToolCRecPtr_PopupChar) : keyByte;
}

bool namesSuggestion(std::uint32_t modifiers, std::uint8_t keyByte, std::uint32_t controlDigits) {
  return isDigit(keyByte) && modifiers == (controlDigits != 0 ? controlKey : 0);
}

bool offerToPopup(Instance& instance, std::uint32_t modifiers, std::uint8_t keyByte) {
  const bool separate = instance.state<SessionEventState>().SeparateKeyPress;
  if (!separate && isDigit(keyByte) && modifiers == 0) return false;  // a number is being typed
  if (Get_Control_KeyPress(instance) != 0) return true;
  if (answerTo(instance, keyByte) != 0) return false;
  Log(instance, "--> Handled-->Keys_Popup_and_Window = TRUE");
  return true;
}

/// What stands in field 26 is the key, and no answer, where nobody has heard of it. One that was
/// delivered is decided by the field, answered in time or not: another may act on it.
bool wasDelivered(CommandOutcome outcome) {
  return outcome == CommandOutcome::Answered || outcome == CommandOutcome::NotAnswered;
}

bool navigate(Instance& instance, std::uint8_t keyByte) {
  return wasDelivered(SendToolCommandAndWait(instance, kNavigatePopupCommand)) &&
         answerTo(instance, keyByte) == 0;
}

bool popupTakesKeys(Instance& instance) {
  const ToolRec record(instance);
  return record && record.get(ToolCRecPtr_ClipState) == 0 &&
         record.get(ToolCRecPtr_InteractiveMode) != 0 &&
         (record.get(ToolCRecPtr_MenuFlags) & kPopupTakesNoKeys) == 0 &&
         record.get(ToolCRecPtr_isDocWindowOpen) != kNoWindow;
}

bool isDocumentWindow(std::uint32_t window) {
  return window != kNoWindow && window != kPopupWindow;
}

bool documentWindowIsOpen(Instance& instance) {
  const ToolRec record(instance);
  return isDocumentWindow(record.get(ToolCRecPtr_isDocWindowOpen));
}

bool hasWindowModifier(std::uint32_t modifiers) { return (modifiers & (cmdKey | optionKey)) != 0; }

}  // namespace

bool HandleKeys_Popup_and_Window(Instance& instance, std::uint32_t windowState,
                                 std::uint32_t modifiers, std::uint8_t keyByte,
                                 std::uint32_t controlDigits) {
  if (windowState != kPopupWindow) return false;
  if (keyByte == kDownArrowKey || namesSuggestion(modifiers, keyByte, controlDigits)) {
    return offerToPopup(instance, modifiers, keyByte);
  }
  return (keyByte == kHomeKey || keyByte == kTabKey) && navigate(instance, keyByte);
}

std::int32_t Get_Control_KeyPress(Instance& instance) {
  auto& asking = instance.state<WindowKeysState>().NORECURSION;
  if (asking != 0 || IsMenuCallEvent(instance) != 0 || !popupTakesKeys(instance) ||
      isQUORVANEAPP_FRONT(instance) != 0) {
    return 0;
  }
  const FlagGuard guard(asking);
  if (!wasDelivered(SendToolCommandAndWait(instance, kChooseSuggestionCommand))) return 0;
  const std::uint32_t answer = answerTo(instance, 0);
  if (answer == 0) return 0;
  Log(instance, "popupwindowchar ", PrivateNumber{answer});
  return 1;
}

std::int32_t Check_InteractiveWindowKeys2(Instance& instance, std::uint32_t mask) {
  auto& telling = instance.state<WindowKeysState>().NXRECURSION;
  if (telling != 0) return 0;
  putField(instance, ToolCRecPtr_PopupChar, mask != 0 ? 1 : 0);
  if (!documentWindowIsOpen(instance)) return 0;
  const FlagGuard guard(telling);
  CallDirectQorvToolCommandAppEvent(instance, kWindowModifiersCommand);
  return 1;
}

std::int32_t Check_IntractiveWindowKeys3(Instance& instance, std::uint8_t keyByte) {
  if (!isDigit(keyByte) || !documentWindowIsOpen(instance)) return 0;
  return hasWindowModifier(instance.platform().carbonEvents.GetCurrentKeyModifiers()) ? 1 : 0;
}

std::int32_t Check_IntractiveWindowKeys(Instance& instance, std::uint8_t keyByte,
                                        std::uint32_t modifiers) {
  if (!isDigit(keyByte) || !hasWindowModifier(modifiers)) return 0;
  return documentWindowIsOpen(instance) ? 1 : 0;
}

}  // namespace quorvane
