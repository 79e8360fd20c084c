#pragma once
// An application as it lies in an application folder: a folder "NAME.app" whose Finder info beside
// it (`._NAME.app`) says its signature, with a launcher in it. A program without a slash is looked
// for beside the running one, then as the shell would do it; one with a slash that isn't absolute
// lies in the application's folder. Folder, launcher and program are this user's or root's, and
// nobody else can write them. It stays the process that it was started as, and announces
// itself when it is ready.

#include <filesystem>
#include <string>

#include "hosts/desktop/Launcher.h"
#include "platform/MacTypes.h"

namespace quorvane::desktop {

struct ApplicationPackage {
  std::filesystem::path folder;
  FourCharCode signature = 0;  ///< 0: it has no Finder info
  Launcher launcher;

  /// As it is called in its folder.
  [[nodiscard]] std::string name() const { return folder.filename(); }
};

/// Of an absolute path. Throws std::runtime_error, with a message that names the file and the
/// reason.
ApplicationPackage readApplicationPackage(const std::filesystem::path& folder);
/// Makes the folder, mode 0700 with those on the way, or makes it anew. Throws std::runtime_error
/// likewise.
void writeApplicationPackage(const ApplicationPackage& package);

/// Where the program lies; throws std::runtime_error where it can't be run.
std::filesystem::path programOf(const ApplicationPackage& package);

}  // namespace quorvane::desktop
