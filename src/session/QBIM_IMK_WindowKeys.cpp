#include "src/session/QBIM_IMK_WindowKeys.h"

#include <optional>
#include <string_view>

#include "src/base/KeyBytes.h"
#include "src/base/Log.h"
#include "src/bridge/Presence.h"
#include "src/bridge/ToolCalls.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/session/QBIM_IMK_KeyTime.h"
#include "src/session/QBIM_IMK_WindowCancel.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kPopupTakesNoKeys = 0x400;  // of field 7

bool isDigit(std::uint8_t keyByte) { return keyByte >= '0' && keyByte <= '9'; }

void putField(Process& process, std::uint32_t field, std::uint32_t value) {
  const ToolRec record(process);
  record.put(field, value);
}

// What the main application has left of the key; the key itself where there is no record any more.
std::uint32_t answerTo(Process& process, std::uint8_t keyByte) {
  const ToolRec record(process);
  return record ? record.get(ToolCRecPtr_PopupChar) : keyByte;
}

bool namesSuggestion(std::uint32_t modifiers, std::uint8_t keyByte, std::uint32_t controlDigits) {
  return isDigit(keyByte) && modifiers == (controlDigits != 0 ? controlKey : 0);
}

bool offerToPopup(Process& process, std::uint32_t modifiers, std::uint8_t keyByte) {
  const bool separate = process.state<SessionEventState>().SeparateKeyPress;
  if (!separate && isDigit(keyByte) && modifiers == 0) return false;  // a number is being typed
  if (Get_Control_KeyPress(process) != 0) return true;
  if (answerTo(process, keyByte) != 0) return false;
  Log(process, "--> Handled-->Keys_Popup_and_Window = TRUE");
  return true;
}

/// What stands in field 26 is the key, and no answer, where nobody has heard of it. One that was
/// delivered is decided by the field, answered in time or not: another may act on it.
bool wasDelivered(CommandOutcome outcome) {
  return outcome == CommandOutcome::Answered || outcome == CommandOutcome::NotAnswered;
}

bool navigate(Process& process, std::uint8_t keyByte) {
  return wasDelivered(SendToolCommandAndWait(process, kNavigatePopupCommand)) &&
         answerTo(process, keyByte) == 0;
}

bool popupTakesKeys(Process& process) {
  const ToolRec record(process);
  return record && record.get(ToolCRecPtr_ClipState) == 0 &&
         record.get(ToolCRecPtr_InteractiveMode) != 0 &&
         (record.get(ToolCRecPtr_MenuFlags) & kPopupTakesNoKeys) == 0 &&
         record.get(ToolCRecPtr_isDocWindowOpen) != kNoWindow;
}

bool isDocumentWindow(std::uint32_t window) {
  return window != kNoWindow && window != kPopupWindow;
}

bool documentWindowIsOpen(Process& process) {
  const ToolRec record(process);
  return isDocumentWindow(record.get(ToolCRecPtr_isDocWindowOpen));
}

bool hasWindowModifier(std::uint32_t modifiers) { return (modifiers & (cmdKey | optionKey)) != 0; }

}  // namespace

bool HandleKeys_Popup_and_Window(Process& process, std::uint32_t windowState,
                                 std::uint32_t modifiers, std::uint8_t keyByte,
                                 std::uint32_t controlDigits) {
  if (windowState != kPopupWindow) return false;
  if (keyByte == kDownArrowKey || namesSuggestion(modifiers, keyByte, controlDigits)) {
    return offerToPopup(process, modifiers, keyByte);
  }
  return (keyByte == kHomeKey || keyByte == kTabKey) && navigate(process, keyByte);
}

std::int32_t Get_Control_KeyPress(Process& process) {
  auto& asking = process.state<WindowKeysState>().NORECURSION;
  if (asking != 0 || !popupTakesKeys(process) || isQUORVANEAPP_FRONT(process) != 0) return 0;
  const FlagGuard guard(asking);
  if (!wasDelivered(SendToolCommandAndWait(process, kChooseSuggestionCommand))) return 0;
  const std::uint32_t answer = answerTo(process, 0);
  if (answer == 0) return 0;
  Log(process, "popupwindowchar ", PrivateNumber{answer});
  return 1;
}

std::int32_t Check_InteractiveWindowKeys2(Process& process, std::uint32_t mask) {
  auto& telling = process.state<WindowKeysState>().NXRECURSION;
  if (telling != 0) return 0;
  putField(process, ToolCRecPtr_PopupChar, mask != 0 ? 1 : 0);
  if (!documentWindowIsOpen(process)) return 0;
  const FlagGuard guard(telling);
  CallDirectQorvToolCommandAppEvent(process, kWindowModifiersCommand);
  return 1;
}

std::int32_t Check_IntractiveWindowKeys3(Process& process, std::uint8_t keyByte) {
  if (!isDigit(keyByte) || !documentWindowIsOpen(process)) return 0;
  return hasWindowModifier(process.platform().carbonEvents.GetCurrentKeyModifiers()) ? 1 : 0;
}

std::int32_t Check_IntractiveWindowKeys(Process& process, std::uint8_t keyByte,
                                        std::uint32_t modifiers) {
  if (!isDigit(keyByte) || !hasWindowModifier(modifiers)) return 0;
  return documentWindowIsOpen(process) ? 1 : 0;
}

}  // namespace quorvane
