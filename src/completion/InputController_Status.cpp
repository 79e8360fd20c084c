// The gates that completion passes at each event, and its way in for everybody who isn't the
// text-input framework.

#include "src/bridge/qorv_sharedmem.h"
#include "src/completion/InputController.h"
#include "src/menu/CurrentAppFlags.h"
#include "src/menu/QBIM_IMK_Params.h"

namespace quorvane {
namespace {

struct SharedServer {
  explicit SharedServer(Instance& instance) : controller(instance) {}
  InputController controller;
};

struct FunctionsController {
  explicit FunctionsController(Instance& instance) : controller(instance) {}
  InputController controller;
};

}  // namespace

std::uint32_t Get_InteractiveCheck_Status(Instance& instance) {
  ToolRec record(instance);
  if (!record) return 0;
  const std::uint32_t interactive = record.get(ToolCRecPtr_InteractiveMode);
  if ((record.get(ToolCRecPtr_MenuFlags) & record.get(ToolCRecPtr_MenuMask)) != 0) return 0;
  Get_Qorvatatus_Flags(instance);
  const std::uint32_t flags = instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
  const bool on = interactive != 0 && (flags & kInteractiveCheck) != 0;
  return on ? flags & kCompletionFlag : 0;
}

bool do_AutoCompleteCancelWindow(Instance& instance) {
  ToolRec record(instance);
  return record &&
         (record.get(ToolCRecPtr_isDocWindowOpen) == 1 || record.get(ToolCRecPtr_ClipState) != 0 ||
          record.get(ToolCRecPtr_SuspendTotal) != 0);
}

InputController& InputController::sharedServer(Instance& instance) {
  return instance.state<SharedServer>().controller;
}

InputController& get_InputController_ptr(Instance& instance) {
  return instance.state<FunctionsController>().controller;
}

void CancelAutoCompleteSession(Instance& instance) {
  get_InputController_ptr(instance).do_CancelAutoCompleteSession();
}

void Cancel_AutoCompleteSession_withoutspace(Instance& instance) {
  keepTypedWord(instance);
  get_InputController_ptr(instance).do_Cancel_AutoCompleteSession_withoutspace();
}

IMKTextInput* Get_Last_Client(Instance& instance) {
  return instance.state<InputControllerState>().lastClient;
}

}  // namespace quorvane
