#include "hosts/desktop/ApplicationPackage.h"

#include <glib.h>
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
  const path file = launcherFile(folder);
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
  std::error_code error;
  if (access(program.c_str(), X_OK) != 0 || std::filesystem::is_directory(program, error)) {
    failAt(program, "can't be run");
  }
  return program;
}

}  // namespace quorvane::desktop
