#include "apps/MainApplicationSetting.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "hosts/desktop/ApplicationPackage.h"
#include "hosts/desktop/DesktopConfiguration.h"
#include "tools/parameters/disk/PreferencesOnDisk.h"

namespace quorvane {
namespace {

using std::filesystem::path;

constexpr const char* kNone = "none";

/// One that can be launched.
path applicationAt(const std::string& word) {
  path application = std::filesystem::absolute(word).lexically_normal();
  if (!application.has_filename()) application = application.parent_path();
  static_cast<void>(desktop::programOf(desktop::readApplicationPackage(application)));
  return application;
}

int tell(const std::optional<path>& chosen) {
  std::cout << "main application: "
            << (chosen ? chosen->string() : "the first one in the application folder") << '\n';
  return kExitDone;
}

int choose(const std::string& word) {
  const path preferences = desktop::DesktopConfiguration::fromEnvironment().preferencesDirectory;
  if (word.empty()) return tell(parameters::chosenMainApplication(preferences));
  std::optional<path> application;
  try {
    if (word != kNone) application = applicationAt(word);
  } catch (const std::exception& error) {
    std::cerr << "quorvane settings: no application: " << error.what() << '\n';
    return kExitBadUsage;
  }
  parameters::chooseMainApplication(preferences, application);
  return tell(application);
}

}  // namespace

void addMainApplicationSetting(CLI::App& settings, Run& run) {
  CLI::App* const command = settings.add_subcommand(
      "main-application", "Say where the main application lies that is to be launched");
  const auto word = std::make_shared<std::string>();
  command->add_option("FOLDER", *word, "Its folder, or none; nothing: print it");
  command->callback([&run, word] { run = [word] { return choose(*word); }; });
}

}  // namespace quorvane
