// `quorvane status`

#include <CLI/CLI.hpp>
#include <chrono>
#include <iostream>
#include <memory>
#include <thread>

#include "apps/Command.h"
#include "apps/FamilyStatus.h"
#include "hosts/desktop/DesktopConfiguration.h"

namespace quorvane {
namespace {

struct StatusOptions {
  bool json = false;
  bool watch = false;
};

std::string statusNow(const StatusOptions& options) {
  const auto configuration = desktop::DesktopConfiguration::fromEnvironment();
  const auto families = familiesIn(configuration.runtimeDirectory, configuration.keyOffset);
  return options.json ? asJSON(families) : asText(families);
}

/// Until a signal ends us, or nobody reads any more.
int watch(const StatusOptions& options) {
  constexpr std::string_view kWholeScreen = "\x1b[H\x1b[2J";
  while (std::cout << (options.json ? "" : kWholeScreen) << statusNow(options) << std::flush) {
    std::this_thread::sleep_for(std::chrono::seconds(1));
  }
  return kExitFailed;
}

int showStatus(const StatusOptions& options) {
  if (options.watch) return watch(options);
  std::cout << statusNow(options);
  return kExitDone;
}

}  // namespace

void addStatusCommand(CLI::App& app, Run& run) {
  const auto options = std::make_shared<StatusOptions>();
  CLI::App* const command = app.add_subcommand(
      "status",
      "Tell what runs: input methods with their keys and fixes, their siblings, shared segments "
      "and ports. Disturbs nobody, and shows nothing of what was typed.");
  command->add_flag("--json", options->json, "For programs");
  command->add_flag("--watch", options->watch, "Again every second, until interrupted");
  command->callback([&run, options] { run = [options] { return showStatus(*options); }; });
}

}  // namespace quorvane
