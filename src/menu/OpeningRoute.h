#pragma once
// The command route that brings the main application to the front (the other routes: ToolCalls.h).

#include "src/base/Instance.h"

namespace quorvane {

struct OpeningRouteState {
  std::uint32_t commandsUnderWay = 0;  ///< a launch lets another one begin meanwhile
};

/// Nothing while a check runs. The Input Menu is grey while the command is under way, the run loop
/// turning; afterwards all of it can be chosen, until it opens anew. Always 0.
std::int32_t CallQuorvaneToolCommand(Instance& instance, std::uint32_t cmd, bool update);

}  // namespace quorvane
