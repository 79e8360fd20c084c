#include "src/menu/PencilMenulet.h"

#include "src/bridge/QBIMLaunchServer.h"
#include "src/menu/QBIM_IMK_Params.h"

namespace quorvane {

void Set_Qorv_Menulet(Instance& instance) {
  GetAndSetMenuParams3(instance);
  if (instance.state<ParamsState>().Global_PencilMenuFlag != 0) {
    LaunchQuorvaneMenulet(instance);
  } else {
    QuitQuorvaneMenulet(instance);
  }
}

void Get_Pencil_Menulet(Instance& instance) {
  Get_GlobalPencilMenuFlag(instance);
  Set_Qorv_Menulet(instance);
}

}  // namespace quorvane
