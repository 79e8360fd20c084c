#include "src/menu/OpeningRoute.h"

#include "src/bridge/qorv_sharedmem_State.h"
#include "src/bridge/ToolCalls.h"
#include "src/menu/InputMenu.h"
#include "src/menu/MenuState.h"

namespace quorvane {

std::int32_t CallQuorvaneToolCommand(Instance& instance, std::uint32_t cmd, bool update) {
  if (CheckCurrentCheckStatus(instance, update) != 0) return 0;
  EnableAll_NSMenuItems(instance, false);
  QorvOpenApp(instance, cmd);
  EnableAll_NSMenuItems(instance, true);
  SetGrammarMenuIcon();
  return 0;
}

}  // namespace quorvane
