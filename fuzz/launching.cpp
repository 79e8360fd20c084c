// What a launch goes by: launchers, records of starts, and alias records.

#include <string_view>

#include "fuzz/Target.h"
#include "hosts/desktop/LaunchRecord.h"
#include "hosts/desktop/Launcher.h"
#include "hosts/resources/AliasRecord.h"

namespace quorvane::fuzz {

void run(Bytes bytes) {
  const std::string_view text = textOf(bytes);
  if (const auto launcher = desktop::parseLauncher(text)) {
    require(desktop::formatLauncher(*launcher.value) == text, "only what we would write is read");
  }
  const auto starts = desktop::parseLaunchStarts(text);
  require(desktop::parseLaunchStarts(desktop::formatLaunchStarts(starts)) == starts,
          "a record says the same when it is written again");
  if (const auto path = resources::pathOfAlias(bytes)) {
    require(resources::pathOfAlias(resources::aliasRecord(*path)) == path,
            "an alias leads to the same when it is written again");
  }
}

}  // namespace quorvane::fuzz
