#include "hosts/desktop/LaunchRecord.h"

#include <charconv>
#include <optional>

namespace quorvane::desktop {
namespace {

constexpr std::string_view kStartsHead = "quorvane-starts 1\n";
constexpr std::string_view kReady = " ready";

template <class Number>
bool takeNumber(std::string_view& text, Number& number) {
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  if (result.ec != std::errc{}) return false;
  text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
  return true;
}

std::optional<LaunchStart> startOf(std::string_view line) {
  LaunchStart start;
  if (!takeNumber(line, start.pid) || start.pid <= 0 || !line.starts_with(' ')) return {};
  line.remove_prefix(1);
  if (!takeNumber(line, start.began) || (!line.empty() && line != kReady)) return {};
  start.ready = !line.empty();
  return start;
}

}  // namespace

LaunchStarts parseLaunchStarts(std::string_view content) {
  if (content.size() > kLaunchRecordLimit || !content.starts_with(kStartsHead)) return {};
  content.remove_prefix(kStartsHead.size());
  LaunchStarts starts;
  while (!content.empty()) {
    const std::size_t end = content.find('\n');
    const auto start = startOf(content.substr(0, end));
    if (end == std::string_view::npos || !start || starts.size() == kMostStarts) return {};
    starts.push_back(*start);
    content.remove_prefix(end + 1);
  }
  return starts;
}

std::string formatLaunchStarts(const LaunchStarts& starts) {
  std::string content(kStartsHead);
  const std::size_t first = starts.size() - std::min(starts.size(), kMostStarts);
  for (std::size_t i = first; i < starts.size(); ++i) {
    content.append(std::to_string(starts[i].pid)).append(" ");
    content.append(std::to_string(starts[i].began)).append(starts[i].ready ? kReady : "");
    content.append("\n");
  }
  return content;
}

}  // namespace quorvane::desktop
