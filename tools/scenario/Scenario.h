#pragma once
// Scenario files: plain text, an act a line, run on the memory host. The statements are
// described in docs/scenarios.md.

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::scenario {

inline constexpr int kHolds = 0;
inline constexpr int kDiffers = 1;     ///< an expectation failed
inline constexpr int kUnreadable = 2;  ///< no such file, or a statement that can't be carried out

/// Runs the text of one scenario. Each difference goes to `out`, with both sides, under `name` and
/// its line.
int replayText(std::string_view text, const std::string& name, std::ostream& out);
int replayFile(const std::string& path, std::ostream& out);

}  // namespace quorvane::scenario

namespace quorvane {

/// Runs scenario files one after the other: the worst of their results, which are also exit codes.
int replayFiles(const std::vector<std::string>& paths, std::ostream& out);

}  // namespace quorvane
