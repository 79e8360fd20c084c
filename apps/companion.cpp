// `quorvane companion`

#include <CLI/CLI.hpp>
#include <csignal>

#include "apps/Command.h"
#include "tools/applications/Companion.h"

namespace quorvane {

void addCompanionCommand(CLI::App& app, Run& run) {
  CLI::App* const command = app.add_subcommand(
      "companion", "Run the server or the Pencil Menu alone, until it is interrupted.");
  command->require_subcommand(1);
  for (const applications::Companion& companion : applications::kCompanions) {
    command->add_subcommand(companion.word, companion.name)->callback([&run, &companion] {
      run = [&companion] {
        std::signal(SIGPIPE, SIG_IGN);
        applications::runCompanion(companion);
        return kExitDone;
      };
    });
  }
}

}  // namespace quorvane
