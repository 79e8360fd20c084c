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
std::optional<WindowFields> handOver(Process& process, std::uint32_t modifiers,
                                     std::uint8_t keyByte) {
  const ToolRec record(process);
  if (!record) return std::nullopt;
  const WindowFields fields{record.get(ToolCRecPtr_isDocWindowOpen),
                            record.get(ToolCRecPtr_PopupKeyMode), record.get(ToolCRecPtr_ClipState),
                            record.get(ToolCRecPtr_BufferChanged) != 0};
  if (modifiers == cmdKey && fields.window == kNoWindow) {
    Log(process, "CopyPasteX - CloseInputMenu");
    return std::nullopt;
  }
  record.put(ToolCRecPtr_PopupChar, keyByte);
  return fields;
}

void putField(Process& process, std::uint32_t field, std::uint32_t value) {
  const ToolRec record(process);
  record.put(field, value);
}

void orderRestore(Process& process, BIMSessionRec* session, bool textChanged) {
  putField(process, ToolCRecPtr_ClipState, 0);
  Do_BIM_CallDirectQorvToolCommandAppEvent(process, kRestoreClipboardCommand);
  if (!textChanged) return;
  putField(process, ToolCRecPtr_BufferChanged, 0);
  putField(process, ToolCRecPtr_ClipState, 0);
  CheckEditReplacements(process, session);
}

}  // namespace

std::int32_t RestoreClipboard(Process& process, BIMSessionRec* session, std::uint32_t modifiers,
                              std::uint8_t keyByte) {
  if (leavesClipboardAlone(modifiers, keyByte)) return 0;
  const auto fields = handOver(process, modifiers, keyByte);
  if (!fields) return 0;
  if (fields->clipState == kRestoreDue) orderRestore(process, session, fields->textChanged);
  if (fields->clipState != 0) return 0;
  const bool taken = HandleKeys_Popup_and_Window(process, fields->window, modifiers, keyByte,
                                                 fields->controlDigits);
  return taken ? 1 : 0;
}

std::int32_t Reset_Clip(Process& process, std::uint32_t modifiers) {
  if (modifiers != cmdKey) return 0;
  const ToolRec record(process);
  if (record.get(ToolCRecPtr_ClipState) != kRestoreArmed) return 0;
  record.put(ToolCRecPtr_ClipState, kRestoreDue);
  return 1;
}

}  // namespace quorvane
