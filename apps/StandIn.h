#pragma once
// How the stand-in main application is told to run.

#include <string>
#include <vector>

#include "tools/checker/CheckerOptions.h"

namespace quorvane {

enum class StandInTalk { None, Log, LogWithText };  ///< to our standard error

/// What `quorvane` is told, so that the stand-in runs with these options.
std::vector<std::string> standInArguments(const checker::CheckerOptions& options, bool showText);

}  // namespace quorvane
