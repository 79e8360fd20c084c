#include "hosts/desktop/RuntimeFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <thread>

namespace quorvane::desktop {
namespace {

// "Q7T2M4K9W1.com.tallowmere.QorvInPortServer" and a serial number.
constexpr std::size_t kLongestPortName = 53;
constexpr std::size_t kLongestPath = sizeof(sockaddr_un::sun_path) - 1 - 1 - kLongestPortName;

[[noreturn]] void refuse(const std::filesystem::path& path, const std::string& reason) {
  throw std::runtime_error("runtime folder " + path.string() + ": " + reason);
}

void checkLength(const std::filesystem::path& path) {
  if (path.native().size() <= kLongestPath) return;
  refuse(path,
         "the path is too long for a socket in it; set QUORVANE_RUNTIME_DIR to one of at "
         "most " +
             std::to_string(kLongestPath) + " bytes");
}

void checkOwner(const std::filesystem::path& path) {
  struct stat status {};
  if (lstat(path.c_str(), &status) != 0) refuse(path, std::strerror(errno));
  if (!S_ISDIR(status.st_mode)) refuse(path, "is no folder; set QUORVANE_RUNTIME_DIR to another");
  if (status.st_uid != geteuid()) {
    refuse(path, "belongs to another user; set QUORVANE_RUNTIME_DIR to a folder of your own");
  }
  if ((status.st_mode & 0700) != 0700) {
    refuse(path, "is closed to yourself; run chmod 700 on it");
  }
  if ((status.st_mode & 077) != 0) refuse(path, "is open to other users; run chmod 700 on it");
}

/// It may have been removed since it was opened.
bool isAt(const std::filesystem::path& path, const Descriptor& file) {
  struct stat there {};
  struct stat opened {};
  return lstat(path.c_str(), &there) == 0 && fstat(file.get(), &opened) == 0 &&
         there.st_ino == opened.st_ino && there.st_dev == opened.st_dev;
}

}  // namespace

RuntimeFolder::RuntimeFolder(std::filesystem::path path) : path_(std::move(path)) {
  checkLength(path_);
  if (mkdir(path_.c_str(), 0700) != 0 && errno != EEXIST) {
    refuse(path_, std::string("can't be made (") + std::strerror(errno) +
                      "); set QUORVANE_RUNTIME_DIR to a folder that can");
  }
  checkOwner(path_);
}

Descriptor RuntimeFolder::lock(std::chrono::milliseconds patience) const {
  const auto end = std::chrono::steady_clock::now() + patience;
  do {
    Descriptor file = openLockFile();
    if (!file.valid()) refuse(path_, std::string(".lock can't be opened: ") + std::strerror(errno));
    if (flock(file.get(), LOCK_EX | LOCK_NB) == 0 && isAt(path_ / ".lock", file)) return file;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  } while (std::chrono::steady_clock::now() < end);
  refuse(path_,
         "another process holds .lock; end it (lslocks names it), or set "
         "QUORVANE_RUNTIME_DIR to another folder");
}

/// One byte of the lock file for each set of segments. A lock of this kind and the one on the whole
/// file don't see each other.
Descriptor RuntimeFolder::claimSegments(std::uint32_t keyOffset) const {
  Descriptor file = openLockFile();
  struct flock byte {};
  byte.l_type = F_WRLCK;
  byte.l_whence = SEEK_SET;
  byte.l_start = keyOffset;
  byte.l_len = 1;
  if (file.valid() && fcntl(file.get(), F_OFD_SETLK, &byte) == 0) return file;
  if (file.valid() && (errno == EAGAIN || errno == EACCES)) return {};
  refuse(path_, std::string("the lock can't be had (") + std::strerror(errno) +
                    "); set QUORVANE_RUNTIME_DIR to another folder");
}

Descriptor RuntimeFolder::openLockFile() const {
  return Descriptor(
      open((path_ / ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
}

}  // namespace quorvane::desktop
