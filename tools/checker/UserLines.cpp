#include "tools/checker/UserLines.h"

#include <algorithm>

namespace quorvane::checker {

std::size_t forEachLine(std::string_view file, const std::function<bool(std::string_view)>& take) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (file.starts_with(kByteOrderMark)) file.remove_prefix(kByteOrderMark.size());
  std::size_t refused = 0;
  for (std::size_t lines = 0; !file.empty(); ++lines) {
    const std::size_t end = std::min(file.find('\n'), file.size());
    std::string_view line = file.substr(0, end);
    file.remove_prefix(std::min(end + 1, file.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (!line.empty() && (lines >= kMostUserLines || !take(line))) ++refused;
  }
  return refused;
}

}  // namespace quorvane::checker
