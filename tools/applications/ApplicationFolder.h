#pragma once
// An application folder as the input method searches it, "Quorvane ARC7 X" with "Quorvane.app" in
// it, and what lies in the bundle's SharedSupport. Their program is `quorvane`.

#include <filesystem>
#include <string>
#include <vector>

namespace quorvane::applications {

std::filesystem::path mainApplicationIn(const std::filesystem::path& applications);

/// Makes the folder, mode 0700, with the stand-in as the main application, or makes that anew.
/// Throws std::runtime_error, with a message that names the file and the reason.
void putStandIn(const std::filesystem::path& applications,
                const std::vector<std::string>& arguments = {"checker"});

/// The server and the Pencil Menu; throws likewise.
void putCompanions(const std::filesystem::path& bundle);

}  // namespace quorvane::applications
