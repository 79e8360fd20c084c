#pragma once
// The Pencil Menu runs or not, by the flag in the parameter file.

#include "src/base/Instance.h"

namespace quorvane {

/// Starts or quits it by the flag as last read, with the parameters of the application in front.
void Set_Qorv_Menulet(Instance& instance);
/// The same with the flag read anew.
void Get_Pencil_Menulet(Instance& instance);

}  // namespace quorvane
