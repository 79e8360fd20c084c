#include "apps/UserSetup.h"

#include <iostream>

#include "apps/WithoutHome.h"
#include "hosts/desktop/DesktopConfiguration.h"

namespace quorvane {

setup::Surroundings usersSurroundings() {
  const auto configuration = desktop::DesktopConfiguration::fromEnvironment();
  return {configuration.preferencesDirectory, configuration.configDirectory / "setup.ini",
          "/usr/share/ibus/component", std::filesystem::is_directory("/run/systemd/system")};
}

bool tell(const setup::Report& report) {
  for (const std::string& line : report.changes) std::cout << withoutHome(line) << '\n';
  for (const std::string& line : report.problems)
    std::cerr << "quorvane: " << withoutHome(line) << '\n';
  return report.problems.empty();
}

}  // namespace quorvane
