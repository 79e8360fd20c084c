#pragma once

#include <string>

#include "apps/SystemOptions.h"

namespace quorvane::desk {

struct DeskOptions {
  SystemOptions system{.switches = 0x11873};
  bool annotation = false;  ///< shown from the start
  std::string log;          ///< a file for the log; empty: there is none
};

}  // namespace quorvane::desk
