#pragma once
// The submenus that are filled are filled once after the start, when the main application may be
// ready: tried every half second, until all have items or for seven ticks.

#include <memory>

#include "src/base/Instance.h"

namespace quorvane {

struct MenuEventTimerState {
  std::uint32_t Menu_init_loops = 0;
  bool GotSpelling = false;
  bool GotAutoType = false;
  bool GotWritingStyle = false;
  bool No_recursion = false;
  std::unique_ptr<Registration> Init_MenuEventLoopTimer;  ///< null: it doesn't run
};

/// Begins the time anew of what may happen in intervals only, then as below.
void Install_MenuEventHandlers(Instance& instance);
/// Nothing while it runs.
void Install_MenuEventTimer(Instance& instance);
void CallInit_MenuEventCompletion(Instance& instance);

}  // namespace quorvane
