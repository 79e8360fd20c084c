#pragma once
// A program as a process of its own, away from our terminal.

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace quorvane::desktop {

struct Spawned {
  std::filesystem::path program;
  std::vector<std::string> arguments;                          ///< without the program's name
  std::vector<std::pair<std::string, std::string>> variables;  ///< beside and before our own
  int output = -1;              ///< standard output and standard error
  bool endsWithParent = false;  ///< asked to end when we die
};

/// Reads nothing, and no signal that we hold or leave alone is held or left alone by it, but that
/// of a reader who has gone. Throws std::system_error. One that can't be run ends with 127.
pid_t spawn(const Spawned& spawned);

}  // namespace quorvane::desktop
