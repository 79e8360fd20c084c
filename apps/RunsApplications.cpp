#include "apps/RunsApplications.h"

#include <unistd.h>

#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "hosts/desktop/PrivateFolders.h"
#include "tools/applications/ApplicationFolder.h"

namespace quorvane {
namespace {

bool isAsUsual(const SystemOptions& options) {
  const checker::CheckerOptions& standIn = options.standIn;
  return options.checker && options.talk != StandInTalk::LogWithText &&
         standIn.smartCharacters == 0 && !standIn.popup && !standIn.controlDigits &&
         !standIn.documentWindow;
}

/// What `quorvane` is told, so that the stand-in runs with these options.
std::vector<std::string> standInArguments(const checker::CheckerOptions& options, bool showText) {
  std::vector<std::string> words{"checker", "--smart-characters",
                                 std::to_string(options.smartCharacters)};
  if (options.popup) words.emplace_back("--popup");
  if (options.controlDigits) words.emplace_back("--control-digits");
  if (options.documentWindow) words.emplace_back("--document-window");
  if (showText) words.emplace_back("--show-private");
  return words;
}

}  // namespace

void chooseApplications(desktop::DesktopConfiguration& configuration, const SystemOptions& options,
                        const std::filesystem::path& folder) {
  configuration.endsWhatItLaunches = true;
  if (options.talk != StandInTalk::None) configuration.launchedOutput = STDERR_FILENO;
  if (isAsUsual(options)) return prepareUsersApplications(configuration);
  configuration.applicationsDirectory = folder / "Applications";
  configuration.preferencesDirectory = folder / "Preferences";
  desktop::makePrivateFolders(configuration.applicationsDirectory);
  desktop::makePrivateFolders(configuration.preferencesDirectory);
  if (!options.checker) return;
  const bool showText = options.talk == StandInTalk::LogWithText;
  applications::putStandIn(configuration.applicationsDirectory,
                           standInArguments(options.standIn, showText));
}

void prepareUsersApplications(desktop::DesktopConfiguration& configuration) {
  std::error_code error;
  if (std::filesystem::is_directory(configuration.applicationsDirectory, error)) return;
  const std::filesystem::path& users = configuration.usersApplicationsDirectory;
  try {
    applications::putStandIn(users);
  } catch (const std::exception& failure) {
    throw std::runtime_error(std::string("no application folder: ") + failure.what() +
                             "; set QUORVANE_APPLICATIONS_DIR to a folder that can be written");
  }
  configuration.applicationsDirectory = users;
  std::cerr << "quorvane: made " << users.string()
            << ", with the stand-in as the main application\n";
}

}  // namespace quorvane
