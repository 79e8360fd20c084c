#include "tools/parameters/disk/ParameterFileOnDisk.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <utility>

#include "hosts/desktop/AppleDoubleFile.h"
#include "tools/parameters/UsualParameters.h"

namespace quorvane::parameters {
namespace {

using std::filesystem::path;

path pathIn(const path& support) { return support / kFolder / kFile; }

template <class Value>
Value valueOf(const path& file, resources::Outcome<Value> outcome) {
  if (!outcome) throw std::runtime_error(file.string().append(": ").append(outcome.fault));
  return std::move(*outcome.value);
}

resources::Bytes bytesOf(const path& file) {
  auto bytes = desktop::readAppleDoubleFile(file);
  if (!bytes) throw std::runtime_error(file.string().append(": ").append(std::strerror(errno)));
  return std::move(*bytes);
}

resources::Outcome<ResourceFork> forkIn(const resources::Bytes& bytes) {
  const auto around = resources::readAppleDouble(bytes);
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

/// Nobody else can have made it anew meanwhile: they would need the lock.
path keepAside(const path& file) {
  const auto lock = desktop::lockAppleDouble(file, desktop::kCommandsPatience);
  if (lock == nullptr) throw std::runtime_error(file.string() + ": another process writes it");
  if (forkIn(bytesOf(file))) return {};
  const path damaged = resources::appleDoublePath(file.native());
  path aside = freeName(damaged);
  std::filesystem::rename(damaged, aside);
  return aside;
}

}  // namespace

ResourceFork readParameterFile(const path& support) {
  const path file = pathIn(support);
  return valueOf(file, forkIn(bytesOf(file)));
}

void changeParameterFile(const path& support, const std::function<void(ResourceFork&)>& change) {
  const path file = pathIn(support);
  std::filesystem::create_directories(file.parent_path());
  std::ofstream(file, std::ios::app).close();
  desktop::updateAppleDouble(file, [&](resources::AppleDouble& around) {
    resources::Bytes& fork = around.contentOf(resources::kResourceForkEntry);
    ResourceFork inside = valueOf(file, resources::readResourceFork(fork));
    change(inside);
    fork = valueOf(file, resources::writeResourceFork(inside));
    around.setFinderInfo(kFinderInfo);
  });
}

path prepareParameterFile(const path& support) {
  const path file = pathIn(support);
  const path aside = forkIn(bytesOf(file)) ? path() : keepAside(file);
  ResourceFork now = readParameterFile(support);
  if (addUsual(now)) {
    changeParameterFile(support, [](ResourceFork& fork) { addUsual(fork); });
  }
  return aside;
}

}  // namespace quorvane::parameters
