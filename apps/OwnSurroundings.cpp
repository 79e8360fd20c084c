#include "apps/OwnSurroundings.h"

#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "apps/Segments.h"
#include "hosts/desktop/DesktopConfiguration.h"
#include "hosts/desktop/RuntimeFolder.h"
#include "hosts/icu/IcuTextEncoding.h"
#include "tools/checker/UserFiles.h"

namespace quorvane {
namespace {

constexpr const char* kRuntimeDir = "QUORVANE_RUNTIME_DIR";
constexpr const char* kDataDir = "QUORVANE_DATA_DIR";
constexpr const char* kKeyOffset = "QUORVANE_KEY_OFFSET";

/// An empty variable counts as unset, here as everywhere.
bool isSet(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr && *value != '\0';
}

bool isAlive(std::int32_t pid) { return ::kill(pid, 0) == 0 || errno != ESRCH; }

void removeLeftovers(const std::filesystem::path& usualFolder) {
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(usualFolder, error)) {
    const auto pid = pidOfRun(entry.path().filename().string());
    if (!pid || (isAlive(*pid) && *pid != ::getpid())) continue;
    removeSegments(keyOffsetOf(*pid));
    std::error_code ignored;
    std::filesystem::remove_all(entry.path(), ignored);
  }
}

/// Several runs may share one runtime folder.
std::filesystem::path ownFolder(std::string_view kind) {
  return desktop::DesktopConfiguration::fromEnvironment().runtimeDirectory /
         std::string(kind).append("-").append(std::to_string(::getpid()));
}

}  // namespace

std::optional<std::int32_t> pidOfRun(std::string_view name, std::string_view kind) {
  if (!name.starts_with(kind) || !name.substr(kind.size()).starts_with('-')) return std::nullopt;
  name.remove_prefix(kind.size() + 1);
  std::int32_t pid = 0;
  const auto end = std::from_chars(name.data(), name.data() + name.size(), pid);
  const bool whole = end.ec == std::errc() && end.ptr == name.data() + name.size();
  return whole && pid > 0 ? std::optional(pid) : std::nullopt;
}

OwnSurroundings::OwnSurroundings(bool ownData)
    : usersData_(desktop::DesktopConfiguration::fromEnvironment().dataDirectory) {
  if (!isSet(kRuntimeDir)) makeFolder();
  applicationsFolder_ = ownFolder("applications");
  if (ownData) makeDataFolder();
  if (!isSet(kKeyOffset)) {
    keyOffset_ = keyOffsetOf(::getpid());
    ::setenv(kKeyOffset, std::to_string(keyOffset_).c_str(), 1);
  }
}

void OwnSurroundings::makeFolder() {
  const desktop::RuntimeFolder usual(
      desktop::DesktopConfiguration::fromEnvironment().runtimeDirectory);
  const desktop::Descriptor lock = usual.lock();
  removeLeftovers(usual.path());
  folder_ = ownFolder(kRunKinds[0]);
  ::setenv(kRuntimeDir, folder_.c_str(), 1);
  const desktop::RuntimeFolder own(folder_);
}

void OwnSurroundings::makeDataFolder() {
  dataFolder_ = ownFolder("data");
  ::setenv(kDataDir, dataFolder_.c_str(), 1);
  IcuTextEncoding encoding;
  checker::copyUserFiles(usersData_, dataFolder_, encoding);
}

void OwnSurroundings::remove() {
  if (keyOffset_ != 0) removeSegments(keyOffset_);
  keyOffset_ = 0;
  for (std::filesystem::path* const folder : {&applicationsFolder_, &dataFolder_, &folder_}) {
    std::error_code ignored;
    if (!folder->empty()) std::filesystem::remove_all(*folder, ignored);
    folder->clear();
  }
}

}  // namespace quorvane
