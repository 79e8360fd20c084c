// `quorvane doctor`

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <iostream>
#include <memory>

#include "apps/Command.h"
#include "apps/doctor/Gather.h"
#include "hosts/desktop/DesktopConfiguration.h"
#include "tools/doctor/Checks.h"

namespace quorvane {
namespace {

/// The user's name isn't everybody's business.
std::string withoutHome(std::string text) {
  const std::string home = desktop::DesktopConfiguration::fromEnvironment().homeDirectory;
  if (home.size() < 2) return text;
  for (std::size_t at = text.find(home); at != std::string::npos; at = text.find(home, at + 1)) {
    text.replace(at, home.size(), "~");
  }
  return text;
}

int diagnose(bool json) {
  const auto findings = doctor::examine(gatherFacts());
  std::cout << withoutHome(json ? doctor::asJSON(findings) : doctor::asText(findings));
  return doctor::isAllWell(findings) ? kExitDone : kExitFailed;
}

}  // namespace

void addDoctorCommand(CLI::App& app, Run& run) {
  CLI::App* const command = app.add_subcommand(
      "doctor",
      "Look at each link of the chain from a key to its correction, and tell what is to be done. "
      "Shows nothing of what was typed and names no document.");
  const auto json = std::make_shared<bool>(false);
  command->add_flag("--json", *json, "For programs");
  command->callback([&run, json] { run = [json] { return diagnose(*json); }; });
}

}  // namespace quorvane
