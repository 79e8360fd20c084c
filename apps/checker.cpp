// `quorvane checker`

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "apps/Command.h"
#include "apps/UserParameters.h"
#include "hosts/desktop/DesktopConfiguration.h"
#include "tools/checker/Checker.h"
#include "tools/checker/PasteRequest.h"

namespace quorvane {
namespace {

using checker::Manner;

const std::map<std::string, Manner>& manners() {
  static const std::map<std::string, Manner> table{{"honest", Manner::Honest},
                                                   {"slow", Manner::Slow},
                                                   {"silent", Manner::Silent},
                                                   {"stale", Manner::Stale},
                                                   {"hostile", Manner::Hostile}};
  return table;
}

void addWindowOptions(CLI::App& command, checker::CheckerOptions& options) {
  CLI::Option* const popup = command.add_flag(
      "--popup", options.popup, "Offer a misspelt word's suggestions instead of fixing it");
  command
      .add_flag("--control-digits", options.controlDigits,
                "Digits choose in the popup only with the control key")
      ->needs(popup);
  command
      .add_flag("--document-window", options.documentWindow,
                "Open a document window beside the first text")
      ->excludes(popup);
}

struct PasteOptions {
  std::optional<std::int32_t> pid{};  ///< a request is all that is wanted then
  bool special = false;
};

void addPasteOptions(CLI::App& command, PasteOptions& options) {
  CLI::Option* const paste =
      command
          .add_option("--paste", options.pid,
                      "Start nothing: have the paste keys pressed in process PID, beside a "
                      "main application that runs; 0 for the one that it names")
          ->check(CLI::Range(0, std::numeric_limits<std::int32_t>::max()))
          ->option_text("PID");
  command.add_flag("--special", options.special, "With --paste: without the text's style")
      ->needs(paste);
}

int runCheckerCommand(const checker::CheckerOptions& options, const PasteOptions& paste) {
  std::signal(SIGPIPE, SIG_IGN);
  if (paste.pid) {
    checker::requestPaste(paste.special ? checker::Paste::Special : checker::Paste::Plain,
                          *paste.pid);
  } else {
    prepareUserParameters(desktop::DesktopConfiguration::fromEnvironment().dataDirectory);
    checker::runChecker(options);
  }
  return kExitDone;
}

}  // namespace

void addCheckerCommand(CLI::App& app, Run& run) {
  CLI::App* const command = app.add_subcommand(
      "checker", "Run the stand-in main application alone, until it is interrupted.");
  const auto options = std::make_shared<checker::CheckerOptions>();
  command
      ->add_option_function<std::string>(
          "--manner", [options](const std::string& name) { options->manner = manners().at(name); },
          "How it keeps its side of the agreement")
      ->check(CLI::IsMember(&manners()))
      ->option_text("honest|slow|silent|stale|hostile");
  command->add_option("--slow", options->slowMilliseconds, "Milliseconds that --manner slow thinks")
      ->check(CLI::Range(0U, 60'000U))
      ->option_text("MS (0 to 60000)");
  command->add_option("--seed", options->seed, "Seed of --manner hostile")
      ->check(CLI::Range(0U, std::numeric_limits<std::uint32_t>::max()))
      ->option_text("N [1]");
  command->add_option("--dictionary", options->dictionary, "The dictionary's name for Enchant")
      ->option_text("NAME [en_US]");
  command
      ->add_option("--smart-characters", options->smartCharacters,
                   "Sum of 1 quotes, 2 dashes, 4 capitals at sentence starts")
      ->check(CLI::Range(0U, 7U))
      ->option_text("N [0]");
  addWindowOptions(*command, *options);
  command->add_flag("--trace", options->traceScans, "A log line for each scan");
  command->add_flag("--show-private", options->showText, "Show words in the log");
  const auto paste = std::make_shared<PasteOptions>();
  addPasteOptions(*command, *paste);
  command->callback([&run, options, paste] {
    run = [options, paste] { return runCheckerCommand(*options, *paste); };
  });
}

}  // namespace quorvane
