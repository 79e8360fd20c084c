// `quorvane server`

#include <CLI/CLI.hpp>
#include <csignal>
#include <iostream>
#include <memory>

#include "apps/Command.h"
#include "apps/IBusServer.h"
#include "apps/Keeper.h"
#include "apps/RunningSystem.h"

namespace quorvane {
namespace {

struct ServerOptions {
  bool ibus = false;
  bool log = false;
  bool showPrivate = false;
};

SystemOptions systemOptions(const ServerOptions& options) {
  SystemOptions system;
  system.resident = true;
  system.showPrivate = options.showPrivate;
  if (options.log) system.logDescriptor = STDERR_FILENO;
  return system;
}

void rest(RunningSystem& system) {
  system.host().runLoop().runUntil(
      [&system] {
        system.restoreSiblings();
        system.settle();
        return system.signal() != 0;
      },
      desktop::RunLoop::Deadline::max());
}

/// `again`: one before has ended by accident.
int runServer(const ServerOptions& options, bool again) {
  std::signal(SIGPIPE, SIG_IGN);
  RunningSystem system(systemOptions(options));
  if (system.standsAside()) {
    std::cerr << "quorvane server: another input method of yours runs already; end that one first "
                 "by `quorvane stop`\n";
    return kExitFailed;
  }
  if (!options.ibus) {
    system.run([&system] { rest(system); });
    return kExitDone;
  }
  IBusServer server(system);
  server.run(again);
  return kExitDone;
}

}  // namespace

void addServerCommand(CLI::App& app, Run& run) {
  CLI::App* const command = app.add_subcommand(
      "server", "Run the resident input method, until it is interrupted or told to quit.");
  const auto options = std::make_shared<ServerOptions>();
  command->add_flag("--ibus", options->ibus, "Be the engine `quorvane` of the IBus daemon here");
  command->add_flag("--log", options->log, "Show the log on standard error");
  command->add_flag("--show-private", options->showPrivate, "Show typed text in the log");
  command->callback([&run, options] {
    run = [options] {
      if (!options->ibus) return runServer(*options, false);
      return keepRunning([&](bool again) { return runServer(*options, again); });
    };
  });
}

}  // namespace quorvane
