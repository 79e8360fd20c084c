// `quorvane setup`

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "apps/Command.h"
#include "apps/UserSetup.h"

namespace quorvane {
namespace {

int done(const setup::Report& report) {
  if (!tell(report)) return kExitFailed;
  if (report.changes.empty()) std::cout << "nothing to do\n";
  return kExitDone;
}

int setUpUser() {
  const auto installation = setup::ownInstallation();
  if (!installation) {
    throw std::runtime_error(
        "this program isn't installed; run cmake --install, or install the "
        "package, and use the quorvane from there");
  }
  const setup::Report report = setup::setUp(usersSurroundings(), *installation);
  const int code = done(report);
  if (!report.changes.empty()) {
    std::cout << "Log out and in, then choose Quorvane among the input sources; quorvane doctor "
                 "tells what is missing.\n";
  }
  return code;
}

}  // namespace

void addSetupCommand(CLI::App& app, Run& run) {
  CLI::App* const command = app.add_subcommand(
      "setup",
      "Make the installed input method ready for the user who runs this: adds it to the input "
      "sources of IBus and GNOME, and has systemd look after it. Tells what it changes, and leaves "
      "what others have set.");
  const auto undo = std::make_shared<bool>(false);
  command->add_flag("--undo", *undo, "Take back what it did");
  command->callback([&run, undo] {
    run = [undo] { return *undo ? done(setup::takeBack(usersSurroundings())) : setUpUser(); };
  });
}

}  // namespace quorvane
