#include "src/menu/OpeningRoute.h"

#include "src/bridge/ToolCalls.h"
#include "src/bridge/qorv_sharedmem_State.h"
#include "src/menu/InputMenu.h"
#include "src/menu/MenuState.h"

namespace quorvane {
namespace {

/// The menu is grey until the last one of these has gone.
class GreyMenu {
 public:
  explicit GreyMenu(Instance& instance) : instance_(instance) {
    if (count()++ == 0) EnableAll_NSMenuItems(instance_, false);
  }
  ~GreyMenu() {
    if (--count() == 0) EnableAll_NSMenuItems(instance_, true);
  }
  GreyMenu(const GreyMenu&) = delete;
  GreyMenu& operator=(const GreyMenu&) = delete;

 private:
  std::uint32_t& count() { return instance_.state<OpeningRouteState>().commandsUnderWay; }

  Instance& instance_;
};

}  // namespace

std::int32_t CallQuorvaneToolCommand(Instance& instance, std::uint32_t cmd, bool update) {
  if (CheckCurrentCheckStatus(instance, update) != 0) return 0;
  {
    const GreyMenu grey(instance);
    QorvOpenApp(instance, cmd);
  }
  SetGrammarMenuIcon();
  return 0;
}

}  // namespace quorvane
