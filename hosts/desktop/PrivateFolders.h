#pragma once

#include <filesystem>

namespace quorvane::desktop {

/// Makes what is missing of the path, each with mode 0700. True where something was. Throws
/// std::runtime_error, with a message that names the path and the reason.
bool makePrivateFolders(const std::filesystem::path& path);

/// An empty file with mode 0600 where there is none, with the folders on the way. Throws likewise.
void makePrivateFile(const std::filesystem::path& path);

}  // namespace quorvane::desktop
