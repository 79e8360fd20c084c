#pragma once
// The parameter file in an application support folder of this system.

#include <filesystem>
#include <functional>

#include "tools/parameters/ParameterFile.h"

namespace quorvane::parameters {

/// Changes the file, made with its folder where there is none. What other programs write meanwhile
/// stays. Throws std::runtime_error, with a message that names the file and the reason.
void changeParameterFile(const std::filesystem::path& support,
                         const std::function<void(resources::ResourceFork&)>& change);

}  // namespace quorvane::parameters
