#include "src/menu/MenuEventTimer.h"

#include "src/base/Log.h"
#include "src/menu/InputMenu.h"
#include "src/menu/MenuState.h"

namespace quorvane {
namespace {

constexpr Seconds kFirst{3.0};
constexpr Seconds kInterval{0.5};
constexpr std::uint32_t kMostLoops = 7;

void look(Instance& instance, bool& got, std::uint32_t head) {
  if (!got) got = SubMenu_Count(instance, head) != 0;
}

void tick(Instance& instance, MenuEventTimerState& state) {
  Log(instance, "--> IMK Timer loop ", state.Menu_init_loops);
  ++state.Menu_init_loops;
  look(instance, state.GotSpelling, "SpLg"_4cc);
  look(instance, state.GotAutoType, "ATyp"_4cc);
  look(instance, state.GotWritingStyle, "MWSt"_4cc);
  const bool all = state.GotSpelling && state.GotAutoType && state.GotWritingStyle;
  if (!state.Init_MenuEventLoopTimer || (!all && state.Menu_init_loops < kMostLoops)) return;
  Log(instance, "--> IMK Timer stop");
  state.Init_MenuEventLoopTimer.reset();
  state.Menu_init_loops = 0;
}

}  // namespace

void Install_MenuEventHandlers(Instance& instance) {
  instance.state<MenuUpdateState>().Menu_timerinterval = {};
  Install_MenuEventTimer(instance);
}

void Install_MenuEventTimer(Instance& instance) {
  auto& state = instance.state<MenuEventTimerState>();
  if (state.Init_MenuEventLoopTimer) return;
  state.Init_MenuEventLoopTimer = instance.platform().runLoop.addTimer(
      kFirst, kInterval, [&instance] { CallInit_MenuEventCompletion(instance); });
}

void CallInit_MenuEventCompletion(Instance& instance) {
  auto& state = instance.state<MenuEventTimerState>();
  if (state.No_recursion) return;
  const FlagGuard guard(state.No_recursion);
  tick(instance, state);
}

}  // namespace quorvane
