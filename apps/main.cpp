// The command a person types. Constructs and runs, nothing more.

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "apps/Command.h"

namespace {

int parseAndRun(int argc, char** argv) {
  CLI::App app("The input-method half of a desktop writing checker.", "quorvane");
  app.set_version_flag("--version", QUORVANE_VERSION);
  app.require_subcommand(1);
  quorvane::Run run;
  quorvane::addTypeCommand(app, run);
  quorvane::addCheckerCommand(app, run);
  quorvane::addReplayCommand(app, run);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? quorvane::kExitDone : quorvane::kExitBadUsage;
  }
  return run();
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return parseAndRun(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "quorvane: " << error.what() << '\n';
    return quorvane::kExitFailed;
  }
}
