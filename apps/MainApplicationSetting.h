#pragma once
// `quorvane settings main-application`

#include "apps/Command.h"

namespace quorvane {

void addMainApplicationSetting(CLI::App& settings, Run& run);

}  // namespace quorvane
