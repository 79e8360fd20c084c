#pragma once
// What the processes of a user tell one another of an application's starts, so that nobody starts
// it twice, or again and again: a file of the runtime folder, ".starts-NAME.app-SUM" (SUM is of
// its path), read and replaced
// under the folder's lock.
//
//   quorvane-starts 1
//   4711 8123456            process id, and when it began in clock ticks since the system did
//   4712 8123999 ready      it has announced itself
//
// Pure text work: no file is touched here.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::desktop {

struct LaunchStart {
  std::int32_t pid = 0;
  std::uint64_t began = 0;
  bool ready = false;
  bool operator==(const LaunchStart&) const = default;
};

/// Oldest first.
using LaunchStarts = std::vector<LaunchStart>;

/// More are of no use.
inline constexpr std::size_t kMostStarts = 3;
inline constexpr std::size_t kLaunchRecordLimit = 256;

/// Reads foreign bytes: nothing for anything but the form above.
LaunchStarts parseLaunchStarts(std::string_view content);
/// The last `kMostStarts` of them.
std::string formatLaunchStarts(const LaunchStarts& starts);

}  // namespace quorvane::desktop
