// `quorvane replay`

#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "apps/Command.h"
#include "tools/scenario/Scenario.h"

namespace quorvane {
namespace {

// Not by an exception: the text field of a scenario would take that for the input method's.
[[noreturn]] void endOutOfMemory() {
  std::cout.flush();
  std::fputs("quorvane: out of memory\n", stderr);
  std::_Exit(scenario::kUnreadable);
}

int replay(const std::vector<std::string>& files) {
  std::set_new_handler(endOutOfMemory);
  return replayFiles(files, std::cout);
}

}  // namespace

void addReplayCommand(CLI::App& app, Run& run) {
  CLI::App* const command = app.add_subcommand(
      "replay", "Run scenario files in memory; show where an expectation fails.");
  const auto files = std::make_shared<std::vector<std::string>>();
  command->add_option("FILE", *files, "Scenario files")->required()->option_text("...");
  command->callback([&run, files] { run = [files] { return replay(*files); }; });
}

}  // namespace quorvane
