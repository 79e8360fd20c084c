#pragma once
// The parameter file in an application support folder of this system.

#include <filesystem>
#include <functional>
#include <vector>

#include "tools/parameters/ParameterFile.h"

namespace quorvane::parameters {

// The parameter file is the first by name of the right type and creator, as the input method looks
// for it; where there is none, the usual one. All of these throw std::runtime_error, with a message
// that names the file and the reason.

/// Without resources where there is no file. One that can't be read throws.
ResourceFork readParameterFile(const std::filesystem::path& support);

/// Changes the file, made with its folder where there is none. What other programs write meanwhile
/// stays, and what `change` throws leaves the file as it was.
void changeParameterFile(const std::filesystem::path& support,
                         const std::function<void(ResourceFork&)>& change);

/// Sees to it that the input method finds a file, and adds what is usual and missing. One that is
/// damaged is kept aside first and made anew: what those are called then.
std::vector<std::filesystem::path> prepareParameterFile(const std::filesystem::path& support);

}  // namespace quorvane::parameters
