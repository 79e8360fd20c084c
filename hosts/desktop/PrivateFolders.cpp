#include "hosts/desktop/PrivateFolders.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "hosts/desktop/Descriptor.h"

namespace quorvane::desktop {
namespace {

[[noreturn]] void failToMake(const std::filesystem::path& path, int reason) {
  throw std::runtime_error(path.string() + ": can't be made: " + std::strerror(reason));
}

}  // namespace

bool makePrivateFolders(const std::filesystem::path& path) {
  std::error_code error;
  if (path.empty() || std::filesystem::is_directory(path, error)) return false;
  makePrivateFolders(path.parent_path());
  if (mkdir(path.c_str(), 0700) == 0) return true;
  const int reason = errno;
  if (std::filesystem::is_directory(path, error)) return false;  // somebody was faster
  failToMake(path, reason);
}

void makePrivateFile(const std::filesystem::path& path) {
  makePrivateFolders(path.parent_path());
  const Descriptor made(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (!made.valid() && errno != EEXIST) failToMake(path, errno);
}

}  // namespace quorvane::desktop
