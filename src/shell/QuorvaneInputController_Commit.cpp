#include "src/shell/QuorvaneInputController_Commit.h"

#include <algorithm>
#include <utility>

#include "src/bridge/qorv_sharedmem_State.h"
#include "src/completion/InputController.h"
#include "src/keys/qorvHIDkeys.h"
#include "src/session/FixGuard.h"
#include "src/session/QBIM_IMK_Publication.h"
#include "src/shell/QuorvaneInputController.h"
#include "src/shell/QuorvaneInputController_TextPosition.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kLeftShiftKey = 56;
constexpr NSRange kNoRange{NSNotFound, NSNotFound};

bool standBefore(const NSRange& selected, std::uint32_t count) {
  return count <= selected.location;
}

NSRange rangeBefore(const NSRange& selected, std::uint32_t count) {
  return {selected.location - count, count};
}

// Tells the main application that the client is being called.
class ToolBusyScope {
 public:
  explicit ToolBusyScope(Process& process) : process_(process) {
    Set_ToolCRecPtr_unusedx2(process_, 1);
  }
  ~ToolBusyScope() { Set_ToolCRecPtr_unusedx2(process_, 0); }
  ToolBusyScope(const ToolBusyScope&) = delete;
  ToolBusyScope& operator=(const ToolBusyScope&) = delete;

 private:
  Process& process_;
};

std::optional<std::u16string> takeParkedBytes(Process& process) {
  std::vector<std::uint8_t> block;
  block.swap(process.state<ControllerState>().stringbufferHandle);
  const auto end = std::find(block.begin(), block.end(), std::uint8_t{0});
  return process.platform().textEncoding.initWithData(
      {block.data(), static_cast<std::size_t>(end - block.begin())}, NSStringEncoding::UTF8);
}

bool hasParkedBytes(const ControllerState& state) {
  return !state.stringbufferHandle.empty() && state.stringbufferHandle.front() != 0;
}

}  // namespace

void QuorvaneInputController::setComposedBuffer(const std::u16string* text) {
  if (text != nullptr) _composedBuffer = *text;
}

void QuorvaneInputController::setOriginalBuffer(const std::u16string* text) {
  if (text != nullptr) _originalBuffer = *text;
}

void QuorvaneInputController::originalBufferAppend(const std::u16string& text,
                                                   IMKTextInput& client) {
  _originalBuffer += text;
  ++_insertionIndex;
  client.setMarkedText(_originalBuffer, {0, _originalBuffer.size()}, kNoRange);
}

void QuorvaneInputController::commitComposition(IMKTextInput* sender) {
  auto& state = process_.state<ControllerState>();
  if (state.INITED_FLAG == 0 || sender == nullptr) return;
  state.commit_sender = sender;
  if (state.stringbuffer) {
    const std::u16string text = *std::exchange(state.stringbuffer, std::nullopt);
    setComposedBuffer(&text);
  } else if (hasParkedBytes(state)) {
    const auto text = takeParkedBytes(process_);
    setComposedBuffer(text ? &*text : nullptr);
  } else {
    return;
  }
  insertComposed(*sender);
  process_.platform().inputMethodKit.ownTextFollows();
}

// The buffer is empty between events, whatever the client does.
void QuorvaneInputController::insertComposed(IMKTextInput& sender) {
  const std::u16string text = std::exchange(_composedBuffer, {});
  const std::uint32_t replace = std::exchange(process_.state<ControllerState>().ORIGINALREPLACE, 0);
  _insertionIndex = 0;
  keepTypedWord(process_);
  if (replace == 0) return sender.insertText(text, kNoRange);
  const NSRange selected = sender.selectedRange();
  if (standBefore(selected, replace)) {
    return sender.insertText(text, rangeBefore(selected, replace));
  }
  // The session may have had it since it was parked.
  BIM_CancelSessionTextBuffer(process_, BIMGetActiveSession(process_));
  dropFix(process_, FixFault::BeyondCaret);
}

bool QuorvaneInputController::nsstring_commit_to_composition(const std::u16string& text,
                                                             std::uint32_t replaceLength) {
  Check_Update_Document_Session_Buffer(process_, nullptr);
  WakeUpFront(process_);
  bool taken = true;
  if (IMKTextInput* sender = process_.state<ControllerState>().commit_sender; sender != nullptr) {
    taken = commitDirectly(*sender, text, replaceLength);
  } else {
    park(text, replaceLength);
  }
  reset_typing_count(process_);
  return taken;
}

bool QuorvaneInputController::commitDirectly(IMKTextInput& sender, const std::u16string& text,
                                             std::uint32_t replaceLength) {
  keepTypedWord(process_);
  const NSRange selected = sender.selectedRange();
  if (!standBefore(selected, replaceLength)) return false;
  const ToolBusyScope busy(process_);
  if (replaceLength != 0) {
    sender.setMarkedText(text, selected, rangeBefore(selected, replaceLength));
  }
  sender.insertText(text, kNoRange);
  process_.platform().carbonEvents.CheckEventQueueForUserCancel();
  return true;
}

void QuorvaneInputController::park(const std::u16string& text, std::uint32_t replaceLength) {
  auto& state = process_.state<ControllerState>();
  state.ORIGINALREPLACE = replaceLength;
  state.stringbuffer = text;
  HID_PressRelease_VirtualKey(process_, kLeftShiftKey);
  process_.platform().clock.usleep(20);
  HID_PressRelease_VirtualKey(process_, kLeftShiftKey);
}

bool Do_nsstring_commit_to_composition(Process& process, const std::u16string& text,
                                       std::uint32_t replaceLength) {
  return Get_QuorvaneInputController(process).nsstring_commit_to_composition(text, replaceLength);
}

void Do_commit_to_composition(Process& process, const std::uint8_t* bytes, std::uint32_t length,
                              std::uint32_t originalReplace) {
  auto& state = process.state<ControllerState>();
  state.ORIGINALREPLACE = originalReplace;
  state.stringbufferHandle.assign(bytes, bytes + length);
  state.stringbufferHandle.push_back(0);
  HID_PressRelease_VirtualKey(process, kLeftShiftKey);
}

void WakeUpFront(Process& process) {
  ProcessManager& manager = process.platform().processManager;
  ProcessSerialNumber psn;
  if (manager.GetFrontProcess(psn) == noErr) manager.WakeUpProcess(psn);
}

}  // namespace quorvane
