#include "tools/parameters/disk/ParameterFileOnDisk.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "hosts/desktop/AppleDoubleFile.h"
#include "hosts/desktop/PrivateFolders.h"
#include "tools/parameters/UsualParameters.h"
#include "tools/parameters/disk/OutcomeOfFile.h"

namespace quorvane::parameters {
namespace {

using std::filesystem::path;

bool isParameterFile(const path& file) {
  std::error_code none;
  if (resources::isAppleDoubleName(file.filename().native())) return false;
  if (!std::filesystem::is_regular_file(file, none)) return false;
  const auto around = desktop::readAppleDoubleFile(file);
  return around && resources::finderInfoOf(*around) == kFinderInfo;
}

/// The one that the input method finds; the usual one where it finds none.
path pathIn(const path& support) {
  const path folder = support / kFolder;
  std::error_code none;
  path first;
  for (const auto& each : std::filesystem::directory_iterator(folder, none)) {
    const bool before = first.empty() || each.path() < first;
    if (before && isParameterFile(each.path())) first = each.path();
  }
  return first.empty() ? folder / kFile : first;
}

resources::Outcome<ResourceFork> forkOf(const path& file) {
  const auto bytes = desktop::readAppleDoubleFile(file);
  if (!bytes && errno == EFBIG) return {std::nullopt, "the file is larger than 16 MiB"};
  if (!bytes && errno == EINVAL) return {std::nullopt, "it is no file"};
  if (!bytes) throw std::runtime_error(file.string().append(": ").append(std::strerror(errno)));
  const auto around = resources::readAppleDouble(*bytes);
  if (!around) return {std::nullopt, around.fault};
  return resources::readResourceFork(around.value->content(resources::kResourceForkEntry));
}

path freeName(const path& taken) {
  path name = taken.string() + ".damaged";
  for (int i = 2; std::filesystem::exists(name); ++i) {
    name = taken.string() + ".damaged-" + std::to_string(i);
  }
  return name;
}

/// Nobody else can have made it anew meanwhile: they would need the lock. Empty: they have.
path keepAside(const path& file) {
  const auto lock = desktop::lockAppleDouble(file, desktop::kCommandsPatience);
  if (lock == nullptr) throw std::runtime_error(file.string() + ": another process writes it");
  if (forkOf(file)) return {};
  const path damaged = resources::appleDoublePath(file.native());
  path aside = freeName(damaged);
  std::filesystem::rename(damaged, aside);
  return aside;
}

}  // namespace

ResourceFork readParameterFile(const path& support) {
  const path file = pathIn(support);
  return valueOf(file, forkOf(file));
}

void changeParameterFile(const path& support, const std::function<void(ResourceFork&)>& change) {
  const path file = pathIn(support);
  desktop::makePrivateFile(file);
  if (!std::filesystem::is_regular_file(file))
    throw std::runtime_error(file.string() + ": no file");
  desktop::updateAppleDouble(file, [&](resources::AppleDouble& around) {
    resources::Bytes& fork = around.contentOf(resources::kResourceForkEntry);
    ResourceFork inside = valueOf(file, resources::readResourceFork(fork));
    change(inside);
    fork = valueOf(file, resources::writeResourceFork(inside));
    around.setFinderInfo(kFinderInfo);
  });
}

std::vector<path> prepareParameterFile(const path& support) {
  std::vector<path> all;
  for (path file = pathIn(support); !forkOf(file); file = pathIn(support)) {
    if (path aside = keepAside(file); !aside.empty()) all.push_back(std::move(aside));
  }
  ResourceFork now = readParameterFile(support);
  if (addUsual(now) || !isParameterFile(pathIn(support))) {
    changeParameterFile(support, [](ResourceFork& fork) { addUsual(fork); });
  }
  return all;
}

}  // namespace quorvane::parameters
