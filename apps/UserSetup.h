#pragma once
// The setup of the user who runs the program.

#include "tools/setup/Setup.h"

namespace quorvane {

setup::Surroundings usersSurroundings();
/// Prints changes on standard output and problems on standard error. False where there were some.
bool tell(const setup::Report& report);

}  // namespace quorvane
