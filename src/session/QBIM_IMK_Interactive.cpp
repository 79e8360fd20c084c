#include "src/session/QBIM_IMK_Interactive.h"

#include "src/base/KeyBytes.h"
#include "src/base/Log.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/menu/CurrentAppFlags.h"
#include "src/session/CharacterPolicy.h"
#include "src/session/FixGuard.h"
#include "src/session/QBIM_IMK_Clipboard.h"
#include "src/session/QBIM_IMK_Publication.h"
#include "src/session/QBIM_IMK_Suspension.h"
#include "src/session/QuorvaneInputController_TextPosition.h"

namespace quorvane {
namespace {

struct WindowAndCount {
  std::uint32_t window = 0;          // field 31
  std::uint32_t suspendedTotal = 0;  // field 19
  bool suspended = false;
  bool clipboardInUse = false;  // field 27
};

bool sameSession(const ToolRec& record, const BIMSessionRec& session) {
  constexpr std::uint32_t kComparedBits = 0xFFFF;
  return (session.handle & kComparedBits) ==
         (record.get(ToolCRecPtr_SessionHandle) & kComparedBits);
}

// The count belongs to one session, and another session's key ends it.
void countSuspendedKey(Instance& instance, const ToolRec& record, const BIMSessionRec& session,
                       WindowAndCount& state) {
  const std::uint32_t count = record.get(ToolCRecPtr_SuspendCount) + 1;
  record.put(ToolCRecPtr_SuspendCount, count);
  if (state.suspendedTotal > count) {
    state.suspended = true;
    Log(instance, " suspendedresult = true");
  }
  if (sameSession(record, session)) return;
  endSuspension(record);
  state.suspendedTotal = 0;
  state.suspended = false;
  Log(instance, " suspendedresult = false ");
}

WindowAndCount countKey(Instance& instance, const BIMSessionRec& session) {
  WindowAndCount state;
  ToolRec record(instance);
  if (!record) return state;
  state.window = record.get(ToolCRecPtr_isDocWindowOpen);
  state.clipboardInUse = record.get(ToolCRecPtr_ClipState) != 0;
  state.suspendedTotal = record.get(ToolCRecPtr_SuspendTotal);
  if (state.suspendedTotal != 0) countSuspendedKey(instance, record, session, state);
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

void actOnWordEnd(Instance& instance, BIMSessionRec& session, const WindowAndCount& state) {
  if (state.clipboardInUse) Reset_Clip(instance, cmdKey);
  if (state.suspendedTotal == 0) Do_Get_Text_Position(instance, &session);
  if ((instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS & kInteractiveCheck) != 0) {
    scanSentence(instance, session);
  }
  session.editState = 0;
}

}  // namespace

std::int32_t CallInteractiveEventHandler(Instance& instance, BIMSessionRec* session,
                                         std::uint8_t keyByte, bool /*letterDeleted*/) {
  const std::uint32_t flags = instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
  if ((flags & kInteractiveMask) == 0 || session == nullptr || !session->sessionText) return 0;
  const WindowAndCount state = countKey(instance, *session);
  if (state.suspended) return 1;
  Set_InteractiveSession(instance, session, keyByte);
  ToolRec record(instance);
  if (!record || isInsideWord(*session, state, keyByte)) return 0;
  if (needsNoScan(state, keyByte)) return 1;
  actOnWordEnd(instance, *session, state);
  return 0;
}

}  // namespace quorvane
