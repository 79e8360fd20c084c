#include "src/session/QuorvaneInputController_Commit.h"

#include <algorithm>
#include <utility>

#include "src/base/VirtualKeys.h"
#include "src/bridge/qorv_sharedmem_State.h"
#include "src/keys/qorvHIDkeys.h"
#include "src/session/CommandSelection.h"
#include "src/session/FixGuard.h"
#include "src/session/QBIM_IMK_Publication.h"
#include "src/session/QuorvaneInputController_TextPosition.h"
#include "src/session/WordInProgress.h"

namespace quorvane {
namespace {

constexpr NSRange kNoRange{NSNotFound, NSNotFound};

bool standBefore(const NSRange& selected, Utf16Units length) {
  return length.count <= selected.location;
}

NSRange rangeBefore(const NSRange& selected, Utf16Units length) {
  return {selected.location - length.count, length.count};
}

// Tells the main application that the client is being called.
class ToolBusyScope {
 public:
  explicit ToolBusyScope(Instance& instance) : instance_(instance) {
    Set_ToolCRecPtr_unusedx2(instance, 1);
  }
  ~ToolBusyScope() { Set_ToolCRecPtr_unusedx2(instance_, 0); }
  ToolBusyScope(const ToolBusyScope&) = delete;
  ToolBusyScope& operator=(const ToolBusyScope&) = delete;

 private:
  Instance& instance_;
};

std::optional<std::u16string> takeParkedBytes(Instance& instance) {
  std::vector<std::uint8_t> block;
  block.swap(instance.state<CommitState>().stringbufferHandle);
  const auto end = std::find(block.begin(), block.end(), std::uint8_t{0});
  return instance.platform().textEncoding.initWithData(
      {block.data(), static_cast<std::size_t>(end - block.begin())}, NSStringEncoding::UTF8);
}

bool hasParkedBytes(const CommitState& state) {
  return !state.stringbufferHandle.empty() && state.stringbufferHandle.front() != 0;
}

// The parked text, the string path's first. Empty: there is none. Bytes that are no UTF-8 leave
// what the buffer held.
bool takeParked(Instance& instance) {
  auto& state = instance.state<CommitState>();
  if (state.stringbuffer) {
    state._composedBuffer = *std::exchange(state.stringbuffer, std::nullopt);
    return true;
  }
  if (!hasParkedBytes(state)) return false;
  if (auto text = takeParkedBytes(instance)) state._composedBuffer = *std::move(text);
  return true;
}

// The buffer is empty between events, whatever the client does.
void insertComposed(Instance& instance, IMKTextInput& sender) {
  auto& state = instance.state<CommitState>();
  const std::u16string text = std::exchange(state._composedBuffer, {});
  const Utf16Units replace = std::exchange(state.ORIGINALREPLACE, {});
  state._insertionIndex = 0;
  keepTypedWord(instance);
  giveSelectionBack(instance, sender);
  if (replace.count == 0) return sender.insertText(text, kNoRange);
  const NSRange selected = sender.selectedRange();
  if (standBefore(selected, replace)) {
    return sender.insertText(text, rangeBefore(selected, replace));
  }
  // The session may have had it since it was parked.
  BIM_CancelSessionTextBuffer(instance, BIMGetActiveSession(instance));
  dropFix(instance, FixFault::BeyondCaret);
}

bool commitDirectly(Instance& instance, IMKTextInput& sender, const std::u16string& text,
                    Utf16Units replaceLength) {
  keepTypedWord(instance);
  giveSelectionBack(instance, sender);
  const NSRange selected = sender.selectedRange();
  if (!standBefore(selected, replaceLength)) return false;
  const ToolBusyScope busy(instance);
  if (replaceLength.count != 0) {
    sender.setMarkedText(text, selected, rangeBefore(selected, replaceLength));
  }
  sender.insertText(text, kNoRange);
  instance.platform().carbonEvents.CheckEventQueueForUserCancel();
  return true;
}

void park(Instance& instance, const std::u16string& text, Utf16Units replaceLength) {
  auto& state = instance.state<CommitState>();
  state.ORIGINALREPLACE = replaceLength;
  state.stringbuffer = text;
  HID_PressRelease_VirtualKey(instance, kVK_Shift);
  instance.platform().clock.usleep(Microseconds(20));
  HID_PressRelease_VirtualKey(instance, kVK_Shift);
}

}  // namespace

void commitParked(Instance& instance, IMKTextInput& sender) {
  instance.state<CommitState>().commit_sender = &sender;
  if (!takeParked(instance)) return;
  insertComposed(instance, sender);
  instance.platform().inputMethodKit.ownTextFollows();
}

bool Do_nsstring_commit_to_composition(Instance& instance, const std::u16string& text,
                                       Utf16Units replaceLength) {
  Check_Update_Document_Session_Buffer(instance, nullptr);
  WakeUpFront(instance);
  bool taken = true;
  if (IMKTextInput* sender = instance.state<CommitState>().commit_sender; sender != nullptr) {
    taken = commitDirectly(instance, *sender, text, replaceLength);
  } else {
    park(instance, text, replaceLength);
  }
  reset_typing_count(instance);
  return taken;
}

void Do_commit_to_composition(Instance& instance, const std::uint8_t* bytes, std::uint32_t length,
                              Utf16Units originalReplace) {
  auto& state = instance.state<CommitState>();
  state.ORIGINALREPLACE = originalReplace;
  state.stringbufferHandle.assign(bytes, bytes + length);
  state.stringbufferHandle.push_back(0);
  HID_PressRelease_VirtualKey(instance, kVK_Shift);
}

void WakeUpFront(Instance& instance) {
  ProcessManager& manager = instance.platform().processManager;
  ProcessSerialNumber psn;
  if (manager.GetFrontProcess(psn) == noErr) manager.WakeUpProcess(psn);
}

}  // namespace quorvane
