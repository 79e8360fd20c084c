#include "src/menu/MenuCommand.h"

#include "src/base/Log.h"
#include "src/keys/QBIM_IMK_EventPosting.h"
#include "src/menu/InputMenu.h"
#include "src/menu/MenuState.h"
#include "src/menu/MenuTable.h"

namespace quorvane {

std::int32_t Do_Menu_Tool_CommandID(Instance& instance, std::uint32_t commandID) {
  const auto run = instance.state<MenuCommandState>().run;
  return run != nullptr ? run(instance, commandID) : kCommandNotHandled;
}

std::int16_t do_Qorv_Do_Menu_Tool_CommandID(Instance& instance, std::uint32_t commandID) {
  return static_cast<std::int16_t>(Do_Menu_Tool_CommandID(instance, commandID));
}

std::int16_t do_QorvMain_Do_Menu_Tool_CommandID(Instance& instance, std::uint32_t commandID) {
  do_PREP_QorvMain_Do_Menu_Tool_CommandID(instance, commandID);
  return do_Qorv_Do_Menu_Tool_CommandID(instance, commandID);
}

void SubMenuActions(Instance& instance, const IMKCommandDictionary& sender) {
  Log(instance, "SubMenuActions");
  const std::int64_t tag = NS_Compare_Menuitems(instance, sender.IMKMenuTitle);
  if (tag == 0) return;
  do_Qorv_Do_Menu_Tool_CommandID(instance, Convert_TagToCommandID(static_cast<std::int32_t>(tag)));
  Set_Main_Menu(instance);
}

}  // namespace quorvane
