// `quorvane corrections`

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "apps/Command.h"
#include "hosts/desktop/DesktopConfiguration.h"
#include "hosts/desktop/LogSink.h"
#include "tools/checker/CorrectionSwitches.h"
#include "tools/checker/TakenBack.h"

namespace quorvane {
namespace {

std::filesystem::path settingsFolder() {
  return desktop::DesktopConfiguration::fromEnvironment().configDirectory;
}

int listTakenBack() {
  desktop::LogSink log(STDERR_FILENO, nullptr);
  for (const auto& entry : checker::TakenBack(settingsFolder(), log).entries()) {
    std::cout << entry.typed << " to " << entry.replacement << ", taken back "
              << (entry.times > 1 ? "for good" : "once") << '\n';
  }
  return kExitDone;
}

int clearTakenBack() {
  checker::TakenBack::clear(settingsFolder());
  return kExitDone;
}

int printSwitches() {
  desktop::LogSink log(STDERR_FILENO, nullptr);
  const auto switches = checker::readCorrectionSwitches(settingsFolder(), log);
  for (const auto& one : checker::kCorrectionSwitches) {
    std::cout << one.name << (switches.*one.on ? " on: " : " off: ") << one.meaning << '\n';
  }
  return kExitDone;
}

int setSwitch(const std::string& name, bool on) {
  desktop::LogSink log(STDERR_FILENO, nullptr);
  log.enabled = true;
  return checker::setCorrectionSwitch(settingsFolder(), log, name, on) ? kExitDone : kExitFailed;
}

void addSwitchCommands(CLI::App& command, Run& run) {
  command.add_subcommand("switches", "Print what is corrected")->callback([&run] {
    run = printSwitches;
  });
  std::vector<std::string> names;
  names.reserve(checker::kCorrectionSwitches.size());
  for (const auto& one : checker::kCorrectionSwitches) names.emplace_back(one.name);
  for (const bool on : {true, false}) {
    CLI::App* const turn =
        command.add_subcommand(on ? "on" : "off", on ? "Correct that, from the next start on"
                                                     : "Leave that as it is typed");
    const auto name = std::make_shared<std::string>();
    turn->add_option("NAME", *name, "One that `switches` prints")
        ->required()
        ->check(CLI::IsMember(names));
    turn->callback([&run, name, on] { run = [name, on] { return setSwitch(*name, on); }; });
  }
}

}  // namespace

void addCorrectionsCommand(CLI::App& app, Run& run) {
  CLI::App* const command = app.add_subcommand(
      "corrections", "What the stand-in corrects, and what it has been told not to.");
  command->require_subcommand(1);
  command->add_subcommand("list", "Print what was taken back")->callback([&run] {
    run = listTakenBack;
  });
  command->add_subcommand("clear", "Forget it")->callback([&run] { run = clearTakenBack; });
  addSwitchCommands(*command, run);
}

}  // namespace quorvane
