#include "apps/StandIn.h"

namespace quorvane {

std::vector<std::string> standInArguments(const checker::CheckerOptions& options, bool showText) {
  std::vector<std::string> words{"checker", "--smart-characters",
                                 std::to_string(options.smartCharacters)};
  if (options.popup) words.emplace_back("--popup");
  if (options.controlDigits) words.emplace_back("--control-digits");
  if (options.documentWindow) words.emplace_back("--document-window");
  if (showText) words.emplace_back("--show-private");
  return words;
}

}  // namespace quorvane
