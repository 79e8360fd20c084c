#include "hosts/desktop/FileLock.h"

#include <poll.h>
#include <sys/file.h>

#include <cerrno>

namespace quorvane::desktop {

bool lockInTime(int file, std::chrono::milliseconds patience) {
  for (auto attempts = patience.count(); flock(file, LOCK_EX | LOCK_NB) != 0; --attempts) {
    const bool isHeld = errno == EWOULDBLOCK || errno == EINTR;
    if (!isHeld || attempts == 0) return false;
    poll(nullptr, 0, 1);
  }
  return true;
}

}  // namespace quorvane::desktop
