#pragma once
// What a program's variables say about its input method.

#include <string>

#include "tools/doctor/Facts.h"

namespace quorvane::doctor {

/// Empty where it isn't set.
std::string valueOf(const Variables& variables, const std::string& name);
bool isGnome(const Variables& variables);
/// Which variables keep toolkits from IBus; empty: none does.
std::string toolkitFault(const Variables& variables);

}  // namespace quorvane::doctor
