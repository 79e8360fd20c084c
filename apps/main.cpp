// The command a person types. Constructs and runs, nothing more.

#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "apps/Command.h"

namespace {

/// A closed one would go to the next file or socket that is opened, and what is meant for standard
/// error would end there. Opened the wrong way round, so that whoever uses it still fails.
void openClosedStandardDescriptors() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(descriptor, F_GETFD) >= 0) continue;
    if (::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY) < 0) return;
  }
}

int parseAndRun(int argc, char** argv) {
  CLI::App app("The input-method half of a desktop writing checker.", "quorvane");
  app.set_version_flag("--version", QUORVANE_VERSION);
  app.require_subcommand(1);
  quorvane::Run run;
  quorvane::addDeskCommand(app, run);
  quorvane::addTypeCommand(app, run);
  quorvane::addCandidatesCommand(app, run);
  quorvane::addCheckerCommand(app, run);
  quorvane::addCorrectionsCommand(app, run);
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
  openClosedStandardDescriptors();
  try {
    return parseAndRun(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "quorvane: " << error.what() << '\n';
    return quorvane::kExitFailed;
  }
}
