#include "hosts/desktop/PrivateFolders.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace quorvane::desktop {

bool makePrivateFolders(const std::filesystem::path& path) {
  std::error_code error;
  if (path.empty() || std::filesystem::is_directory(path, error)) return false;
  makePrivateFolders(path.parent_path());
  if (mkdir(path.c_str(), 0700) == 0) return true;
  const int reason = errno;
  if (std::filesystem::is_directory(path, error)) return false;  // somebody was faster
  throw std::runtime_error(path.string() + ": can't be made: " + std::strerror(reason));
}

}  // namespace quorvane::desktop
