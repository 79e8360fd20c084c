#pragma once
// How a process has ended.

#include <sys/wait.h>

#include <csignal>

namespace quorvane::desktop {

/// By its wait status: it has crashed, or was killed, and nobody has asked it to end.
inline bool wasAccident(int status) {
  if (!WIFSIGNALED(status)) return false;
  const int number = WTERMSIG(status);
  return number != SIGINT && number != SIGTERM && number != SIGHUP;
}

}  // namespace quorvane::desktop
