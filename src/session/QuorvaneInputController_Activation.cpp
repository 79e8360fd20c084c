#include "src/bridge/qorv_sharedmem.h"
#include "src/menu/PencilMenulet.h"
#include "src/session/QBIM_IMK_Sessions.h"
#include "src/session/QBIM_IMK_WindowClick.h"
#include "src/session/QuorvaneInputController.h"

namespace quorvane {

void QuorvaneInputController::activateServer(IMKTextInput* sender) {
  auto& state = instance_.state<ControllerState>();
  state.is_ACTIVE = 1;
  if (state.INITED_FLAG == 0) return;
  _currentClient = sender;
  instance_.state<WindowClickState>().activatedsender = sender;
  Get_SessionHandleFromID(instance_, identityOf(sender));
  Get_Reset_Quorvane_App_Input(instance_);
  Set_Qorv_Menulet(instance_);
}

// The session keeps its text and stays active until another client's activation or key.
void QuorvaneInputController::deactivateServer(IMKTextInput* /*sender*/) {
  auto& state = instance_.state<ControllerState>();
  state.is_ACTIVE = 0;
  if (state.INITED_FLAG != 0) state.activateServer_Inted = 0;
}

void do_activateServer1(Instance& instance, IMKTextInput* sender) {
  Get_QuorvaneInputController(instance).activateServer(sender);
}

void do_deactivateServer1(Instance& instance, IMKTextInput* sender) {
  Get_QuorvaneInputController(instance).deactivateServer(sender);
}

}  // namespace quorvane
