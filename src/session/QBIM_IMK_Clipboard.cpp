#include "src/session/QBIM_IMK_Clipboard.h"

#include <optional>
#include <string_view>

#include "src/base/Log.h"
#include "src/bridge/ToolCalls.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/session/QBIM_IMK_Publication.h"
#include "src/session/QBIM_IMK_WindowCancel.h"
#include "src/session/QBIM_IMK_WindowKeys.h"

namespace quorvane {

namespace {

// Backspace, left arrow and the clipboard's own letters.
constexpr std::string_view kClipboardKeys =
    "\x08\x1c"
    "CVXcvx";

bool leavesClipboardAlone(std::uint32_t modifiers, std::uint8_t keyByte) {
  return modifiers == kEventKeyModifierFnMask || modifiers == shiftKey ||
         kClipboardKeys.find(static_cast<char>(keyByte)) != std::string_view::npos;
}

struct WindowFields {
  std::uint32_t window = kNoWindow;
  std::uint32_t controlDigits = 0;
  std::uint32_t clipState = 0;
  bool textChanged = false;
};

// Hands the key over. Empty where it is no business of any window.
std::optional<WindowFields> handOver(Instance& instance, std::uint32_t modifiers,
                                     std::uint8_t keyByte) {
  const ToolRec record(instance);
  if (!record) return std::nullopt;
  const WindowFields fields{record.get(ToolCRecPtr_isDocWindowOpen),
                            record.get(ToolCRecPtr_PopupKeyMode), record.get(ToolCRecPtr_ClipState),
                            record.get(ToolCRecPtr_BufferChanged) != 0};
  if (modifiers == cmdKey && fields.window == kNoWindow) {
    Log(instance, "CopyPasteX - CloseInputMenu");
    return std::nullopt;
  }
  record.put(ToolCRecPtr_PopupChar, keyByte);
  return fields;
}

void orderRestore(Instance& instance, BIMSessionRec* session, bool textChanged) {
  putField(instance, ToolCRecPtr_ClipState, 0);
  Do_BIM_CallDirectQorvToolCommandAppEvent(instance, kRestoreClipboardCommand);
  if (!textChanged) return;
  putField(instance, ToolCRecPtr_BufferChanged, 0);
  putField(instance, ToolCRecPtr_ClipState, 0);
  if (CheckEditReplacements(instance, session) != 0) losePlace(session);
}

}  // namespace

std::int32_t RestoreClipboard(Instance& instance, BIMSessionRec* session, std::uint32_t modifiers,
                              std::uint8_t keyByte) {
  if (leavesClipboardAlone(modifiers, keyByte)) return 0;
  const auto fields = handOver(instance, modifiers, keyByte);
  if (!fields) return 0;
  if (fields->clipState == kRestoreDue) orderRestore(instance, session, fields->textChanged);
  if (fields->clipState != 0) return 0;
  const bool taken = HandleKeys_Popup_and_Window(instance, fields->window, modifiers, keyByte,
                                                 fields->controlDigits);
  return taken ? 1 : 0;
}

std::int32_t Reset_Clip(Instance& instance, std::uint32_t modifiers) {
  if (modifiers != cmdKey) return 0;
  const ToolRec record(instance);
  if (record.get(ToolCRecPtr_ClipState) != kRestoreArmed) return 0;
  record.put(ToolCRecPtr_ClipState, kRestoreDue);
  return 1;
}

}  // namespace quorvane
