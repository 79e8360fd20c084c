#include "hosts/desktop/ApplicationPackage.h"

#include <glib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <stdexcept>

#include "hosts/desktop/AppleDoubleFile.h"
#include "hosts/desktop/AtomicFile.h"
#include "hosts/desktop/PlainFile.h"
#include "hosts/desktop/PrivateFolders.h"

namespace quorvane::desktop {
namespace {

using std::filesystem::path;

[[noreturn]] void failAt(const path& file, std::string_view reason) {
  throw std::runtime_error(file.string().append(": ").append(reason));
}

/// What others could write they could have started.
void requireTrusted(const path& file) {
  struct stat status {};
  if (!file.is_absolute()) failAt(file, "is no absolute path");
  if (stat(file.c_str(), &status) != 0) failAt(file, std::strerror(errno));
  if (status.st_uid != geteuid() && status.st_uid != 0) failAt(file, "belongs to another user");
  if ((status.st_mode & 022) != 0) failAt(file, "can be written by others; run chmod go-w on it");
}

path launcherFile(const path& application) { return application / "Contents" / "launcher"; }

std::string readLauncher(const path& file) {
  const auto bytes = readPlainFile(file, kLauncherSizeLimit);
  if (!bytes) failAt(file, std::strerror(errno));
  return {bytes->begin(), bytes->end()};
}

path foundProgram(const std::string& name) {
  std::error_code error;
  const path own = std::filesystem::read_symlink("/proc/self/exe", error);
  path beside = own.parent_path() / name;
  if (!error && access(beside.c_str(), X_OK) == 0) return beside;
  const std::unique_ptr<char, decltype(&g_free)> found(g_find_program_in_path(name.c_str()),
                                                       g_free);
  return found == nullptr ? path() : path(found.get());
}

}  // namespace

ApplicationPackage readApplicationPackage(const path& folder) {
  requireTrusted(folder);
  const path file = launcherFile(folder);
  requireTrusted(file);
  auto launcher = parseLauncher(readLauncher(file));
  if (!launcher) failAt(file, launcher.fault);
  const auto around = readAppleDoubleFile(folder);
  const FourCharCode signature = around ? resources::finderInfoOf(*around).fileCreator : 0;
  return {folder, signature, std::move(*launcher.value)};
}

void writeApplicationPackage(const ApplicationPackage& package) {
  const path file = launcherFile(package.folder);
  makePrivateFolders(file.parent_path());
  resources::AppleDouble around;
  around.setFinderInfo({"APPL"_4cc, package.signature});
  const auto info = resources::writeAppleDouble(around);
  if (!info || !replaceAppleDoubleFile(package.folder, *info.value)) {
    failAt(package.folder, "its Finder info can't be written");
  }
  if (!writeFileAtomically(file, formatLauncher(package.launcher), Durability::UntilReboot)) {
    failAt(file, std::strerror(errno));
  }
}

path programOf(const ApplicationPackage& package) {
  const std::string& name = package.launcher.program;
  const bool isPath = name.find('/') != std::string::npos;
  path program = isPath ? package.folder / name : foundProgram(name);
  if (program.empty()) failAt(launcherFile(package.folder), "there is no program " + name);
  requireTrusted(program);
  std::error_code error;
  if (access(program.c_str(), X_OK) != 0 || std::filesystem::is_directory(program, error)) {
    failAt(program, "can't be run");
  }
  return program;
}

}  // namespace quorvane::desktop
