// `quorvane replay`

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "apps/Command.h"
#include "tools/scenario/Scenario.h"

namespace quorvane {

void addReplayCommand(CLI::App& app, Run& run) {
  CLI::App* const command = app.add_subcommand(
      "replay", "Run scenario files in memory; show where an expectation fails.");
  const auto files = std::make_shared<std::vector<std::string>>();
  command->add_option("FILE", *files, "Scenario files")->required()->option_text("...");
  command->callback([&run, files] { run = [files] { return replayFiles(*files, std::cout); }; });
}

}  // namespace quorvane
