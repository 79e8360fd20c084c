// `quorvane desk`

#include <CLI/CLI.hpp>
#include <csignal>
#include <iostream>
#include <memory>

#include "apps/Command.h"
#include "apps/desk/DeskOptions.h"
#include "apps/desk/DeskSession.h"
#include "apps/desk/TerminalType.h"

namespace quorvane {
namespace {

int sitAt(const desk::DeskOptions& options) {
  desk::DeskSession session(options);
  session.run();
  return session.signal();
}

int runDesk(const desk::DeskOptions& options) {
  const std::string problem = desk::terminalProblem();
  if (!problem.empty()) {
    std::cerr << "quorvane desk: " << problem << '\n';
    return kExitBadUsage;
  }
  std::signal(SIGPIPE, SIG_IGN);
  const int signal = sitAt(options);
  return signal == 0 ? kExitDone : endBySignal(signal);
}

/// A word that is being completed isn't the stand-in's to check, and quotes that come with it
/// aren't smart.
void switchCompletionOff(SystemOptions& system) {
  const bool wanted = system.standIn.popup || system.standIn.smartCharacters != 0;
  if (wanted && !system.switches) system.completes = false;
}

}  // namespace

void addDeskCommand(CLI::App& app, Run& run) {
  CLI::App* const command =
      app.add_subcommand("desk", "A text field in this terminal, with the whole system behind it.");
  const auto options = std::make_shared<desk::DeskOptions>();
  addSystemOptions(*command, options->system);
  command->add_flag("--annotation", options->annotation,
                    "Show what is known of the chosen word from the start (F2)");
  command->add_flag("--popup", options->system.standIn.popup,
                    "A misspelt word opens a popup with suggestions: a digit after a pause takes "
                    "one, Escape closes it");
  command->add_option("--log", options->log, "Write the log to a file")->option_text("FILE");
  command->add_flag("--show-private", options->system.showPrivate, "Show typed text in the log");
  command->footer(
      "Keys: F2 annotation on and off, F3 a tap of Shift, F9 the Input Menu, F10 or Ctrl-Q or\n"
      "Ctrl-C quit; all others go to the system. With --popup or --smart words aren't completed\n"
      "unless --switches says so.");
  command->callback([&run, options] {
    switchCompletionOff(options->system);
    run = [options] { return runDesk(*options); };
  });
}

}  // namespace quorvane
