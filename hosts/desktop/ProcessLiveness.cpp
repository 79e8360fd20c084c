#include "hosts/desktop/ProcessLiveness.h"

#include <poll.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <string>

namespace quorvane::desktop {
namespace {

bool isOfThisUser(std::int32_t pid) {
  struct stat status {};
  const std::string path = "/proc/" + std::to_string(pid);
  return stat(path.c_str(), &status) == 0 && status.st_uid == geteuid();
}

bool hasEnded(const Descriptor& process) {
  pollfd entry{process.get(), POLLIN, 0};
  return poll(&entry, 1, 0) != 0;
}

}  // namespace

Descriptor openProcess(std::int32_t pid) {
  Descriptor process(static_cast<int>(syscall(SYS_pidfd_open, pid, 0)));
  if (!process.valid() || hasEnded(process) || !isOfThisUser(pid)) return {};
  return process;
}

}  // namespace quorvane::desktop
