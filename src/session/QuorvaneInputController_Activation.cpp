#include "src/bridge/qorv_sharedmem.h"
#include "src/session/QBIM_IMK_Sessions.h"
#include "src/session/QuorvaneInputController.h"

namespace quorvane {

void QuorvaneInputController::activateServer(IMKTextInput* sender) {
  auto& state = process_.state<ControllerState>();
  state.is_ACTIVE = 1;
  if (state.INITED_FLAG == 0) return;
  _currentClient = sender;
  state.activatedsender = sender;
  Get_SessionHandleFromID(process_, identityOf(sender));
  Get_Reset_Quorvane_App_Input(process_);
}

// The session keeps its text and stays active until another client's activation or key.
void QuorvaneInputController::deactivateServer(IMKTextInput* /*sender*/) {
  auto& state = process_.state<ControllerState>();
  state.is_ACTIVE = 0;
  if (state.INITED_FLAG != 0) state.activateServer_Inted = 0;
}

void do_activateServer1(Process& process, IMKTextInput* sender) {
  Get_QuorvaneInputController(process).activateServer(sender);
}

void do_deactivateServer1(Process& process, IMKTextInput* sender) {
  Get_QuorvaneInputController(process).deactivateServer(sender);
}

}  // namespace quorvane
