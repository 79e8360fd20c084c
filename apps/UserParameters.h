#pragma once
// The user's parameter file, as a command finds it.

#include <filesystem>

namespace quorvane {

/// Makes what is missing, and tells of a damaged file that had to be kept aside. Throws
/// std::runtime_error, which says what to do, where the file can't be had.
void prepareUserParameters(const std::filesystem::path& support);

}  // namespace quorvane
