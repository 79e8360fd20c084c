// `quorvane --install`

#include <CLI/CLI.hpp>

#include "apps/Command.h"
#include "apps/UserSetup.h"
#include "hosts/desktop/DesktopHost.h"
#include "hosts/field/FieldParts.h"
#include "src/shell/main.h"

namespace quorvane {
namespace {

constexpr const char* kInstall = "--install";

int install() {
  field::FieldParts nowhere;  // it shows nothing and gets no key
  desktop::DesktopHost host(desktop::DesktopConfiguration::fromEnvironment(),
                            nowhere.forPlatform());
  Instance instance(host.platform());
  const int code = InputMethodMain(instance, {kInstall});
  if (const auto installation = setup::ownInstallation()) {
    tell(setup::setUp(usersSurroundings(), *installation));
  }
  return code;
}

}  // namespace

void addInstallOption(CLI::App& app, Run& run) {
  app.add_flag_callback(
      kInstall, [&run] { run = install; },
      "Register the input method with the user's input sources, choose it, and end");
}

}  // namespace quorvane
