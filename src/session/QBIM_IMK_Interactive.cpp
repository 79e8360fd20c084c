#include "src/session/QBIM_IMK_Interactive.h"

#include "src/base/Log.h"
#include "src/bridge/QBIMMessageReceive.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/session/CharacterPolicy.h"
#include "src/session/CurrentAppFlags.h"
#include "src/session/FixGuard.h"
#include "src/session/QBIM_IMK_Publication.h"
#include "src/session/QBIM_IMK_TextBuffer.h"
#include "src/session/QBIM_IMK_Windows.h"

namespace quorvane {
namespace {

struct WindowAndCount {
  std::uint32_t window = 0;          // field 31
  std::uint32_t suspendedTotal = 0;  // field 19
  bool suspended = false;
  bool clipboardInUse = false;  // field 27
};

bool sameSession(Process& process, const BIMSessionRec& session) {
  constexpr std::uint32_t kComparedBits = 0xFFFF;
  return (session.handle & kComparedBits) ==
         (GET_TOOLCRECPTR(process, ToolCRecPtr_SessionHandle) & kComparedBits);
}

// The count belongs to one session, and another session's key ends it.
void countSuspendedKey(Process& process, const BIMSessionRec& session, WindowAndCount& state) {
  const std::uint32_t count = GET_TOOLCRECPTR(process, ToolCRecPtr_SuspendCount) + 1;
  PUT_TOOLCRECPTR(process, ToolCRecPtr_SuspendCount, count);
  if (state.suspendedTotal > count) {
    state.suspended = true;
    Log(process, " suspendedresult = true");
  }
  if (sameSession(process, session)) return;
  endSuspension(process);
  state.suspendedTotal = 0;
  state.suspended = false;
  Log(process, " suspendedresult = false ");
}

WindowAndCount readWindowAndCount(Process& process, const BIMSessionRec& session) {
  WindowAndCount state;
  ToolRec record(process);
  if (!record) return state;
  state.window = GET_TOOLCRECPTR(process, ToolCRecPtr_isDocWindowOpen);
  state.clipboardInUse = GET_TOOLCRECPTR(process, ToolCRecPtr_ClipState) != 0;
  state.suspendedTotal = GET_TOOLCRECPTR(process, ToolCRecPtr_SuspendTotal);
  if (state.suspendedTotal != 0) countSuspendedKey(process, session, state);
  return state;
}

bool isInsideWord(const BIMSessionRec& session, const WindowAndCount& state, std::uint8_t keyByte) {
  return valid_chr(keyByte) && state.suspendedTotal == 0 && session.editState == 0;
}

bool needsNoScan(const WindowAndCount& state, std::uint8_t keyByte) {
  if (keyByte == kEscapeKey) return true;
  return state.suspendedTotal == 0 && state.window == 0 &&
         (keyByte == kBackspaceKey || keyByte == kLeftArrowKey);
}

void askForScan(Process& process, BIMSessionRec& session, const WindowAndCount& state) {
  if (state.clipboardInUse) Reset_Clip(process, cmdKey);
  if (FixTarget* target = process.state<InteractiveState>().target;
      target != nullptr && state.suspendedTotal == 0) {
    target->Do_Get_Text_Position(&session);
  }
  if ((process.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS & kInteractiveCheck) != 0) {
    scanSentence(process, session);
  }
  session.editState = 0;
}

}  // namespace

std::int32_t CallInteractiveEventHandler(Process& process, BIMSessionRec* session,
                                         std::uint8_t keyByte, bool /*letterDeleted*/) {
  const std::uint32_t flags = process.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
  if ((flags & kInteractiveMask) == 0 || session == nullptr || !session->sessionText) return 0;
  const WindowAndCount state = readWindowAndCount(process, *session);
  if (state.suspended) return 1;
  Set_InteractiveSession(process, session, keyByte);
  ToolRec record(process);
  if (!record || isInsideWord(*session, state, keyByte)) return 0;
  if (needsNoScan(state, keyByte)) return 1;
  askForScan(process, *session, state);
  return 0;
}

void endSuspension(Process& process) {
  PUT_TOOLCRECPTR(process, ToolCRecPtr_SessionMark, 0);
  PUT_TOOLCRECPTR(process, ToolCRecPtr_SuspendCount, 0);
  PUT_TOOLCRECPTR(process, ToolCRecPtr_SuspendTotal, 0);
}

void Send_Char_Fix(Process& process, const std::uint8_t* byteAddress, std::uint32_t replaceLength) {
  FixTarget* target = process.state<InteractiveState>().target;
  const auto unicode = Convert_ASCIITo_Unicode(process, byteAddress, 1);
  if (target == nullptr || !unicode) return;
  const auto text =
      process.platform().textEncoding.initWithData(*unicode, NSStringEncoding::UTF16LittleEndian);
  if (!text) return;
  // A key is never lost: where there is nothing to replace it stands as it is.
  if (!target->Do_nsstring_commit_to_composition(*text, replaceLength)) {
    target->Do_nsstring_commit_to_composition(*text, 0);
  }
}

void DO_Fix_Commit_Composition(Process& process, BIMSessionRec* session, std::uint8_t keyByte) {
  BIMHandleInput(process, session, keyByte, ByteOrigin::Replacement);
  if (FixTarget* target = process.state<InteractiveState>().target; target != nullptr) {
    target->Do_commit_to_composition(&keyByte, 1, 1);
  }
}

}  // namespace quorvane
