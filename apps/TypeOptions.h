#pragma once

#include <chrono>

#include "apps/SystemOptions.h"

namespace quorvane {

struct TypeOptions {
  SystemOptions system{.application = parameters::kTypeApplication};
  std::chrono::milliseconds delay{0};  ///< behind each key, spent in the run loop
  bool trace = false;
  bool times = false;  ///< tell how long word ends took
};

}  // namespace quorvane
