// The command a person types. Constructs and runs, nothing more.

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

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

/// By itself the library only misses a subcommand where one is misspelt.
std::string usageProblem(const CLI::App* app, const CLI::Error& error) {
  const std::vector<std::string> unknown = app->remaining();
  const bool misspelt = app->get_subcommands().empty() && !unknown.empty();
  return (misspelt ? "Neither a subcommand nor an option: " + unknown.front() : error.what()) +
         "\nRun with --help for more information.\n";
}

int parseAndRun(int argc, char** argv) {
  CLI::App app("The input-method half of a desktop writing checker.", "quorvane");
  app.set_version_flag("--version", QUORVANE_VERSION);
  app.require_subcommand(0, 1);
  app.failure_message(usageProblem);
  quorvane::Run run;
  quorvane::addDeskCommand(app, run);
  quorvane::addTypeCommand(app, run);
  quorvane::addCandidatesCommand(app, run);
  quorvane::addCheckerCommand(app, run);
  quorvane::addCorrectionsCommand(app, run);
  quorvane::addSettingsCommand(app, run);
  quorvane::addReplayCommand(app, run);
  quorvane::addCompanionCommand(app, run);
  quorvane::addServerCommand(app, run);
  quorvane::addStatusCommand(app, run);
  quorvane::addStopCommand(app, run);
  quorvane::addSetupCommand(app, run);
  quorvane::addDoctorCommand(app, run);
  quorvane::addInstallOption(app, run);
  quorvane::addManualCommand(app, run);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? quorvane::kExitDone : quorvane::kExitBadUsage;
  }
  if (run) return run();
  std::cerr << usageProblem(&app, CLI::RequiredError::Subcommand(1));
  return quorvane::kExitBadUsage;
}

/// Text that somebody types lies in our memory.
void leaveNoCoreFile() {
  constexpr rlimit kNone{0, 0};
  ::setrlimit(RLIMIT_CORE, &kNone);
}

/// A full or closed output shows only when what waits is written.
void finishOutput() {
  if (!std::cout.flush()) throw std::runtime_error("can't write all of it to standard output");
}

}  // namespace

int main(int argc, char** argv) {
  openClosedStandardDescriptors();
  leaveNoCoreFile();
  try {
    const int code = parseAndRun(argc, argv);
    finishOutput();
    return code;
  } catch (const std::exception& error) {
    std::cerr << "quorvane: " << error.what() << '\n';
    return quorvane::kExitFailed;
  }
}
