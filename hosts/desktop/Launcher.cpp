#include "hosts/desktop/Launcher.h"

#include <algorithm>
#include <iterator>

namespace quorvane::desktop {
namespace {

constexpr std::string_view kLauncherHead = "quorvane-launcher 1\n";

bool isControl(char c) { return (c >= 0 && c < 0x20 && c != '\n') || c == 0x7F; }

std::vector<std::string> linesOf(std::string_view content) {
  std::vector<std::string> lines;
  for (std::size_t end = 0; (end = content.find('\n')) != std::string_view::npos;) {
    lines.emplace_back(content.substr(0, end));
    content.remove_prefix(end + 1);
  }
  return lines;
}

}  // namespace

resources::Outcome<Launcher> parseLauncher(std::string_view content) {
  if (content.size() > kLauncherSizeLimit) return {{}, "is longer than 16384 bytes"};
  if (!content.starts_with(kLauncherHead)) return {{}, "doesn't begin with quorvane-launcher 1"};
  if (!content.ends_with('\n') || std::ranges::any_of(content, isControl)) {
    return {{}, "has a last line without end or a control character"};
  }
  std::vector<std::string> lines = linesOf(content.substr(kLauncherHead.size()));
  if (lines.empty() || lines.front().empty()) return {{}, "names no program"};
  Launcher launcher{lines.front(), {}};
  launcher.arguments.assign(std::next(lines.begin()), lines.end());
  return {std::move(launcher), {}};
}

std::string formatLauncher(const Launcher& launcher) {
  std::string content(kLauncherHead);
  content.append(launcher.program).append("\n");
  for (const std::string& argument : launcher.arguments) content.append(argument).append("\n");
  return content;
}

}  // namespace quorvane::desktop
