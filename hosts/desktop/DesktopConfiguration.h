#pragma once
// What the environment says about where things lie.

#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>

#include "hosts/desktop/Announcement.h"
#include "platform/MacTypes.h"

namespace quorvane::desktop {

struct DesktopConfiguration {
  /// Null where the variable isn't set.
  using Environment = std::function<const char*(const char* name)>;

  std::uint32_t keyOffset = 0;  ///< added to every shared-memory key
  std::filesystem::path runtimeDirectory;
  std::filesystem::path configDirectory;  ///< user defaults and input sources, in files of ours
  std::filesystem::path bundleDirectory;  ///< what ships with the program
  std::filesystem::path homeDirectory;
  std::filesystem::path cacheDirectory;  ///< of ours
  std::filesystem::path dataDirectory;   ///< the user's application support
  std::filesystem::path preferencesDirectory;
  std::filesystem::path applicationsDirectory;
  std::filesystem::path usersApplicationsDirectory;  ///< the same, or where it isn't made yet
  bool endsWhatItLaunches = false;                   ///< at the latest with this process
  /// What launched programs print goes there; none: to the log.
  std::optional<int> launchedOutput{};
  NSRect screen{0, 0, 1440, 900};
  int logDescriptor = STDERR_FILENO;
  int consoleDescriptor = STDERR_FILENO;
  /// What this process is called in the list of processes until it announces itself.
  Announcement ownProcess{"Quorvane", "????"_4cc, "APPL"_4cc,
                          "com.tallowmere.inputmethod.Quorvane"};

  /// $QUORVANE_KEY_OFFSET; $QUORVANE_RUNTIME_DIR, else $XDG_RUNTIME_DIR/quorvane, else
  /// quorvane-<uid> in the temporary folder; $XDG_CONFIG_HOME/quorvane, else
  /// $HOME/.config/quorvane; $QUORVANE_BUNDLE_DIR, else ../share/quorvane from the program's
  /// folder where that exists, else ../data; $HOME, else the user's folder as the system has it;
  /// $XDG_CACHE_HOME/quorvane, else .cache/quorvane at home; $QUORVANE_DATA_DIR, else
  /// $XDG_DATA_HOME, else .local/share at home; $XDG_CONFIG_HOME, else .config at home;
  /// $QUORVANE_APPLICATIONS_DIR, else quorvane/Applications in $XDG_DATA_HOME or .local/share at
  /// home, where that exists, else Applications in the bundle;
  /// $QUORVANE_SCREEN, as 1440x900. Throws std::runtime_error on a value that can't be read.
  static DesktopConfiguration fromEnvironment();
  static DesktopConfiguration fromEnvironment(const Environment& environment);
};

}  // namespace quorvane::desktop
