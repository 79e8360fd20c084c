#include "hosts/desktop/BoundedWriter.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>

namespace quorvane::desktop {
namespace {

/// A pipe that has room at all takes so much without blocking.
constexpr std::size_t kSurelyTaken = PIPE_BUF;

}  // namespace

void BoundedWriter::write(std::string_view text) {
  while (!text.empty()) {
    if (!waitForRoom()) return;
    const ssize_t written = ::write(descriptor_, text.data(), std::min(text.size(), kSurelyTaken));
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR && errno != EAGAIN) {
      return;
    }
  }
}

bool BoundedWriter::waitForRoom() {
  constexpr int kMilliseconds = 1000;
  pollfd entry{descriptor_, POLLOUT, 0};
  const int ready = poll(&entry, 1, stuck_ ? 0 : kMilliseconds);
  stuck_ = ready == 0;
  return !stuck_;
}

}  // namespace quorvane::desktop
