#include "hosts/desktop/ResourceManager.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include "hosts/desktop/AppleDoubleFile.h"
#include "hosts/desktop/PlainFile.h"

namespace quorvane::desktop {
namespace {

constexpr std::chrono::milliseconds kKeysPatience{2};

}  // namespace

std::string ForkFiles::pathOf(const FSRef& ref) {
  std::string path;
  files_.FSRefMakePath(ref, path);
  return path;
}

std::optional<resources::Bytes> ForkFiles::read(const FSRef& ref) {
  const std::string path = pathOf(ref);
  if (path.empty()) return {};
  auto content = readAppleDoubleFile(path);
  if (!content) complain(ref, std::strerror(errno));
  return content;
}

ForkFiles::Lock ForkFiles::lock(const FSRef& ref) {
  const std::string path = pathOf(ref);
  return path.empty() ? nullptr : lockAppleDouble(path, kKeysPatience);
}

bool ForkFiles::replace(const FSRef& ref, resources::ByteView content) {
  const std::string path = pathOf(ref);
  if (path.empty()) return false;
  if (replaceAppleDoubleFile(path, content)) return true;
  complain(ref, std::strerror(errno));
  return false;
}

void ForkFiles::complain(const FSRef& ref, std::string_view reason) {
  if (log_.enabled) log_.writeLine(pathOf(ref).append(": resources: ").append(reason));
}

ResourceManager::ResourceManager(quorvane::FileManager& files, std::filesystem::path bundleFolder,
                                 quorvane::LogSink& log)
    : ResourceFiles(forks_),
      forks_(files, log),
      bundleFolder_(std::move(bundleFolder)),
      log_(log) {}

std::int32_t ResourceManager::CFBundleOpenBundleResourceMap(std::string_view /*identifier*/) {
  const std::string path = bundleFolder_ / "Quorvane.rsrc";
  const auto content = readPlainFile(path, resources::kLargest);
  if (!content) return -1;
  auto map = resources::readResourceFork(*content);
  if (map) return openMap(std::move(*map.value));
  if (log_.enabled) log_.writeLine(std::string(path).append(": ").append(map.fault));
  return -1;
}

void ResourceManager::CFBundleCloseBundleResourceMap(std::string_view /*identifier*/,
                                                     std::int32_t refNum) {
  CloseResFile(refNum);
}

}  // namespace quorvane::desktop
