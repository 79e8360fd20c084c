#include "hosts/desktop/InputMethodClaim.h"

#include <fcntl.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

namespace quorvane::desktop {
namespace {

// Locks of the kind that no child inherits and whose holder can be told.
using Lock = struct flock;

Lock wholeFile() {
  Lock lock{};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  return lock;
}

bool lockFile(int file) {
  Lock lock = wholeFile();
  return fcntl(file, F_SETLK, &lock) == 0;
}

pid_t holderOf(int file) {
  Lock lock = wholeFile();
  const bool known = fcntl(file, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
  return known ? lock.l_pid : 0;
}

}  // namespace

InputMethodClaim::InputMethodClaim(const RuntimeFolder& folder, std::uint32_t keyOffset) {
  const auto path = folder / (".input-method-" + std::to_string(keyOffset));
  file_ = Descriptor(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
  ours_ = file_.valid() && lockFile(file_.get());
  if (ours_) return;
  if (!file_.valid() || (errno != EAGAIN && errno != EACCES)) {
    throw std::runtime_error(path.string() + ": can't be locked (" + std::strerror(errno) +
                             "); set QUORVANE_RUNTIME_DIR to another folder");
  }
  otherHolder_ = holderOf(file_.get());
}

}  // namespace quorvane::desktop
