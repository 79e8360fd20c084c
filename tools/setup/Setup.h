#pragma once
// What one user's desktop needs for the input method: entries in its lists of input sources, and
// links to what was installed where systemd doesn't look by itself.

#include "tools/setup/Installation.h"
#include "tools/setup/Report.h"

namespace quorvane::setup {

struct Surroundings {
  std::filesystem::path configuration;  ///< the user's, of all programs
  std::filesystem::path record;         ///< the file that remembers what was done
  std::filesystem::path components;     ///< IBus's own
  bool hasSystemd = false;
};

Report setUp(const Surroundings& surroundings, const Installation& installation);
/// What setUp did and still stands.
Report takeBack(const Surroundings& surroundings);

}  // namespace quorvane::setup
