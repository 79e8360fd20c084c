// `quorvane stop`

#include <CLI/CLI.hpp>
#include <iostream>

#include "apps/Command.h"
#include "apps/FamilyEnd.h"
#include "hosts/desktop/DesktopConfiguration.h"

namespace quorvane {
namespace {

int stop() {
  const auto configuration = desktop::DesktopConfiguration::fromEnvironment();
  const FamilyEnd end = endFamily(configuration.runtimeDirectory, configuration.keyOffset);
  if (end.processes == 0) {
    std::cout << "nothing was running\n";
  } else {
    std::cout << "ended " << end.processes << (end.processes == 1 ? " process\n" : " processes\n");
  }
  for (const std::string& what : end.remains) {
    std::cerr << "quorvane stop: still there: " << what << '\n';
  }
  return end.remains.empty() ? kExitDone : kExitFailed;
}

}  // namespace

void addStopCommand(CLI::App& app, Run& run) {
  app.add_subcommand("stop",
                     "End every process of the family and leave nothing of theirs: those of the "
                     "runtime folder, and every type and desk below it.")
      ->callback([&run] { run = stop; });
}

}  // namespace quorvane
