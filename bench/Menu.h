#pragma once
// The opening of the Input Menu beside a thousand dictionary files.

#include "bench/Ratios.h"
#include "src/base/Instance.h"

namespace quorvane::bench {

/// Makes the files. `instance` starts the input method at its first call.
void registerMenu(Instance& (*instance)());
void printMenu(const Ratios& ratios);

}  // namespace quorvane::bench
