// `quorvane corrections`

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <iostream>

#include "apps/Command.h"
#include "hosts/desktop/DesktopConfiguration.h"
#include "hosts/desktop/LogSink.h"
#include "tools/checker/TakenBack.h"

namespace quorvane {
namespace {

int listTakenBack() {
  desktop::LogSink log(STDERR_FILENO, nullptr);
  const auto folder = desktop::DesktopConfiguration::fromEnvironment().configDirectory;
  for (const auto& entry : checker::TakenBack(folder, log).entries()) {
    std::cout << entry.typed << " to " << entry.replacement << ", taken back "
              << (entry.times > 1 ? "for good" : "once") << '\n';
  }
  return kExitDone;
}

int clearTakenBack() {
  checker::TakenBack::clear(desktop::DesktopConfiguration::fromEnvironment().configDirectory);
  return kExitDone;
}

}  // namespace

void addCorrectionsCommand(CLI::App& app, Run& run) {
  CLI::App* const command =
      app.add_subcommand("corrections", "Corrections that the stand-in has been told not to make.");
  command->require_subcommand(1);
  command->add_subcommand("list", "Print what was taken back")->callback([&run] {
    run = listTakenBack;
  });
  command->add_subcommand("clear", "Forget it")->callback([&run] { run = clearTakenBack; });
}

}  // namespace quorvane
