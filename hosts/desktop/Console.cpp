#include "hosts/desktop/Console.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <string>

namespace quorvane::desktop {
namespace {

bool waitForRoom(int descriptor) {
  constexpr int kMilliseconds = 1000;
  pollfd entry{descriptor, POLLOUT, 0};
  return poll(&entry, 1, kMilliseconds) > 0;
}

}  // namespace

void Console::print(std::string_view line) {
  std::string text(line);
  if (!text.ends_with('\n')) text.push_back('\n');
  writeAll(descriptor_, text);
}

void writeAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(descriptor, text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno == EAGAIN) {
      if (!waitForRoom(descriptor)) return;
    } else if (errno != EINTR) {
      return;
    }
  }
}

}  // namespace quorvane::desktop
