#include "hosts/desktop/Bundle.h"

namespace quorvane::desktop {
namespace {

std::string fileName(std::string_view name, std::string_view type) {
  return std::string(name).append(".").append(type);
}

}  // namespace

std::optional<std::string> Bundle::pathForResource(std::string_view name, std::string_view type) {
  const auto path = folder_ / fileName(name, type);
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return {};
  return path.string();
}

std::optional<std::string> Bundle::pathForResource(std::string_view name, std::string_view type,
                                                   std::string_view subdirectory) {
  const auto path = folder_ / subdirectory / fileName(name, type);
  std::error_code error;
  if (!std::filesystem::exists(path, error)) return {};
  return path.string();
}

std::optional<std::string> Bundle::CFBundleGetBundleWithIdentifier(std::string_view identifier) {
  if (identifier != identifier_) return {};
  return folder_.string();
}

std::optional<std::string> Bundle::CFBundleCopySharedSupportURL(std::string_view identifier) {
  if (identifier != identifier_) return {};
  return CFBundleCopySharedSupportURL();
}

std::optional<std::string> Bundle::CFBundleCopySharedSupportURL() {
  return (folder_ / "SharedSupport").string();
}

}  // namespace quorvane::desktop
