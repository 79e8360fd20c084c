#include "src/menu/MenuEventTimer.h"

#include <array>

#include "src/base/Log.h"
#include "src/bridge/qorv_sharedmem_State.h"
#include "src/menu/InputMenu.h"
#include "src/menu/MenuState.h"
#include "src/menu/QBIM_AutoType_IMK.h"
#include "src/menu/QBIM_SpellMenu_IMK.h"
#include "src/menu/QBIM_WritingStyle_IMK.h"

namespace quorvane {
namespace {

constexpr Seconds kFirst{3.0};
constexpr Seconds kInterval{0.5};
constexpr std::uint32_t kMostLoops = 7;

void buildWritingStyles(Instance& instance) {
  if (Is_Quorvane_AppReady(instance) != 0) GetWritingStyleMenu(instance, 1000);
}

/// A submenu with the way to fill it.
struct FilledSubmenu {
  std::uint32_t head;
  bool MenuEventTimerState::*got;
  void (*build)(Instance& instance);
};
constexpr std::array<FilledSubmenu, 3> kFilledSubmenus{{
    {"SpLg"_4cc, &MenuEventTimerState::GotSpelling,
     [](Instance& instance) { MSPELLCreateMenu(instance, 0); }},
    {"ATyp"_4cc, &MenuEventTimerState::GotAutoType,
     [](Instance& instance) { Get_AutoType_Menu(instance, 3000); }},
    {"MWSt"_4cc, &MenuEventTimerState::GotWritingStyle, buildWritingStyles},
}};

/// True where they all have items now.
bool buildMissing(Instance& instance, MenuEventTimerState& state) {
  bool all = true;
  for (const FilledSubmenu& submenu : kFilledSubmenus) {
    bool& got = state.*submenu.got;
    if (!got) submenu.build(instance);
    if (!got) got = SubMenu_Count(instance, submenu.head) != 0;
    all = all && got;
  }
  return all;
}

void tick(Instance& instance, MenuEventTimerState& state) {
  Log(instance, "--> IMK Timer loop ", state.Menu_init_loops);
  ++state.Menu_init_loops;
  const bool all = buildMissing(instance, state);
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
