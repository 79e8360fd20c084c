// `quorvane doctor`

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "apps/Command.h"
#include "apps/WithoutHome.h"
#include "apps/doctor/Gather.h"
#include "tools/doctor/Checks.h"

namespace quorvane {
namespace {

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
