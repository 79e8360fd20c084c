#include "hosts/desktop/ApplicationPackage.h"

#include <glib.h>
#include <unistd.h>

#include <algorithm>
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

constexpr std::string_view kLauncherHead = "quorvane-launcher 1\n";

[[noreturn]] void failAt(const path& file, std::string_view reason) {
  throw std::runtime_error(file.string().append(": ").append(reason));
}

path launcherFile(const path& application) { return application / "Contents" / "launcher"; }

bool isControl(char c) { return (c >= 0 && c < 0x20 && c != '\n') || c == 0x7F; }

std::vector<std::string> linesOf(std::string_view content) {
  std::vector<std::string> lines;
  for (std::size_t end = 0; (end = content.find('\n')) != std::string_view::npos;) {
    lines.emplace_back(content.substr(0, end));
    content.remove_prefix(end + 1);
  }
  return lines;
}

std::string readLauncher(const path& file) {
  const auto bytes = readPlainFile(file, kLauncherSizeLimit);
  if (!bytes) failAt(file, std::strerror(errno));
  return {bytes->begin(), bytes->end()};
}

path foundProgram(const std::string& name) {
  std::error_code error;
  const path own = std::filesystem::read_symlink("/proc/self/exe", error);
  const path beside = own.parent_path() / name;
  if (!error && access(beside.c_str(), X_OK) == 0) return beside;
  const std::unique_ptr<char, decltype(&g_free)> found(g_find_program_in_path(name.c_str()),
                                                       g_free);
  return found == nullptr ? path() : path(found.get());
}

}  // namespace

resources::Outcome<Launcher> parseLauncher(std::string_view content) {
  if (content.size() > kLauncherSizeLimit) return {{}, "is longer than 16384 bytes"};
  if (!content.starts_with(kLauncherHead)) return {{}, "doesn't begin with quorvane-launcher 1"};
  if (!content.ends_with('\n') || std::ranges::any_of(content, isControl)) {
    return {{}, "has a last line without end or a control character"};
  }
  std::vector<std::string> lines = linesOf(content.substr(kLauncherHead.size()));
  if (lines.empty() || lines.front().empty()) return {{}, "names no program"};
  Launcher launcher{lines.front(), {}};
  launcher.arguments.assign(std::next(lines.begin()), lines.end());
  return {std::move(launcher), {}};
}

std::string formatLauncher(const Launcher& launcher) {
  std::string content(kLauncherHead);
  content.append(launcher.program).append("\n");
  for (const std::string& argument : launcher.arguments) content.append(argument).append("\n");
  return content;
}

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
  const path program = isPath ? package.folder / name : foundProgram(name);
  if (program.empty()) failAt(launcherFile(package.folder), "there is no program " + name);
  std::error_code error;
  if (access(program.c_str(), X_OK) != 0 || std::filesystem::is_directory(program, error)) {
    failAt(program, "can't be run");
  }
  return program;
}

}  // namespace quorvane::desktop
