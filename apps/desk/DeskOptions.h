#pragma once

#include <string>

#include "apps/SystemOptions.h"

namespace quorvane::desk {

struct DeskOptions {
  SystemOptions system{.application = parameters::kDeskApplication};
  bool annotation = false;  ///< shown from the start
  std::string log;          ///< a file for the log; empty: there is none
};

}  // namespace quorvane::desk
