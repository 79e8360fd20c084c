// The gates that completion passes at each event, and its way in for everybody who isn't the
// text-input framework.

#include "src/bridge/qorv_sharedmem.h"
#include "src/completion/InputController.h"
#include "src/session/CurrentAppFlags.h"

namespace quorvane {
namespace {

struct SharedServer {
  explicit SharedServer(Process& process) : controller(process) {}
  InputController controller;
};

struct FunctionsController {
  explicit FunctionsController(Process& process) : controller(process) {}
  InputController controller;
};

}  // namespace

std::uint32_t Get_InteractiveCheck_Status(Process& process) {
  ToolRec record(process);
  if (!record) return 0;
  const std::uint32_t interactive = record.get(ToolCRecPtr_InteractiveMode);
  if ((record.get(ToolCRecPtr_MenuFlags) & record.get(ToolCRecPtr_MenuMask)) != 0) return 0;
  const std::uint32_t flags = process.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
  const bool on = interactive != 0 && (flags & kInteractiveCheck) != 0;
  return on ? flags & kCompletionFlag : 0;
}

bool do_AutoCompleteCancelWindow(Process& process) {
  ToolRec record(process);
  return record &&
         (record.get(ToolCRecPtr_isDocWindowOpen) == 1 || record.get(ToolCRecPtr_ClipState) != 0 ||
          record.get(ToolCRecPtr_SuspendTotal) != 0);
}

InputController& InputController::sharedServer(Process& process) {
  return process.state<SharedServer>().controller;
}

InputController& get_InputController_ptr(Process& process) {
  return process.state<FunctionsController>().controller;
}

void CancelAutoCompleteSession(Process& process) {
  get_InputController_ptr(process).do_CancelAutoCompleteSession();
}

void Cancel_AutoCompleteSession_withoutspace(Process& process) {
  keepTypedWord(process);
  get_InputController_ptr(process).do_Cancel_AutoCompleteSession_withoutspace();
}

IMKTextInput* Get_Last_Client(Process& process) {
  return process.state<InputControllerState>().lastClient;
}

}  // namespace quorvane
