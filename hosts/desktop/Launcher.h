#pragma once
// How an application is run: the file Contents/launcher in its folder, each line ended by a line
// feed:
//
//   quorvane-launcher 1
//   quorvane                the program
//   checker                 its arguments, one a line
//   --popup
//
// Pure text work: no file is touched here.

#include <string>
#include <string_view>
#include <vector>

#include "hosts/resources/CheckedBytes.h"

namespace quorvane::desktop {

struct Launcher {
  std::string program;
  std::vector<std::string> arguments;
  bool operator==(const Launcher&) const = default;
};

inline constexpr std::size_t kLauncherSizeLimit = 16'384;

/// Reads foreign bytes: only the form above.
resources::Outcome<Launcher> parseLauncher(std::string_view content);
std::string formatLauncher(const Launcher& launcher);

}  // namespace quorvane::desktop
