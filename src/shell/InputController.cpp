#include "src/shell/InputController.h"

#include "src/base/Log.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/session/CurrentAppFlags.h"
#include "src/shell/QuorvaneInputController.h"

namespace quorvane {

bool InputController::handleEvent(const NSEvent& event, IMKTextInput* client) {
  process_.state<InputControllerState>().lastClient = client;
  if (do_handleEvent(process_, event, client)) return true;
  if ((Get_InteractiveCheck_Status(process_) & kCompletionFlag) == 0) {
    Log(process_, " ************* InteractiveAutoCompleteMask  NOTENABLED");
  }
  return false;
}

void InputController::activateServer(IMKTextInput* sender) {
  _currentCandidateIndex = 1;
  _candidates.clear();
  Log(process_, "activateServer ", static_cast<std::uint32_t>(identityOf(sender)));
  do_activateServer1(process_, sender);
}

void InputController::deactivateServer(IMKTextInput* sender) {
  Log(process_, "deactivateServer ", static_cast<std::uint32_t>(identityOf(sender)));
  do_deactivateServer1(process_, sender);
}

std::uint32_t InputController::recognizedEvents(IMKTextInput* /*sender*/) {
  return kRecognizedEvents;
}

std::uint32_t Get_InteractiveCheck_Status(Process& process) {
  ToolRec record(process);
  if (!record) return 0;
  const std::uint32_t interactive = GET_TOOLCRECPTR(process, ToolCRecPtr_InteractiveMode);
  if ((GET_TOOLCRECPTR(process, ToolCRecPtr_MenuFlags) &
       GET_TOOLCRECPTR(process, ToolCRecPtr_MenuMask)) != 0)
    return 0;
  const std::uint32_t flags = process.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
  const bool on = interactive != 0 && (flags & kInteractiveCheck) != 0;
  return on ? flags & kCompletionFlag : 0;
}

bool do_AutoCompleteCancelWindow(Process& process) {
  ToolRec record(process);
  return record && (GET_TOOLCRECPTR(process, ToolCRecPtr_isDocWindowOpen) == 1 ||
                    GET_TOOLCRECPTR(process, ToolCRecPtr_ClipState) != 0 ||
                    GET_TOOLCRECPTR(process, ToolCRecPtr_SuspendTotal) != 0);
}

}  // namespace quorvane
