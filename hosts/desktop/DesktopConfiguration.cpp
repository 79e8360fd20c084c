#include "hosts/desktop/DesktopConfiguration.h"

#include <pwd.h>

#include <charconv>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>

namespace quorvane::desktop {
namespace {

using Environment = DesktopConfiguration::Environment;

std::optional<std::string> valueOf(const Environment& environment, const char* name) {
  const char* value = environment(name);
  if (value == nullptr || *value == '\0') return {};
  return value;
}

/// A relative path in one of the base-directory variables counts as unset.
std::optional<std::filesystem::path> absolutePath(const Environment& environment,
                                                  const char* name) {
  const auto value = valueOf(environment, name);
  if (!value || !std::filesystem::path(*value).is_absolute()) return {};
  return *value;
}

bool readNumber(std::string_view text, std::uint32_t& number) {
  const bool hexadecimal = text.starts_with("0x");
  if (hexadecimal) text.remove_prefix(2);
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number, hexadecimal ? 16 : 10);
  return result.ec == std::errc{} && result.ptr == end;
}

std::uint32_t keyOffset(const Environment& environment) {
  std::uint32_t offset = 0;
  const auto value = valueOf(environment, "QUORVANE_KEY_OFFSET");
  if (value && !readNumber(*value, offset)) {
    throw std::runtime_error("QUORVANE_KEY_OFFSET is \"" + *value +
                             "\"; set it to a number from 0 to 4294967295 or unset it");
  }
  return offset;
}

std::filesystem::path runtimeDirectory(const Environment& environment) {
  if (const auto own = valueOf(environment, "QUORVANE_RUNTIME_DIR")) {
    return std::filesystem::absolute(*own);
  }
  if (const auto shared = absolutePath(environment, "XDG_RUNTIME_DIR")) return *shared / "quorvane";
  const auto temporary = absolutePath(environment, "TMPDIR").value_or("/tmp");
  return temporary / ("quorvane-" + std::to_string(geteuid()));
}

std::filesystem::path configDirectory(const Environment& environment) {
  if (const auto config = absolutePath(environment, "XDG_CONFIG_HOME")) return *config / "quorvane";
  if (const auto home = absolutePath(environment, "HOME")) return *home / ".config" / "quorvane";
  throw std::runtime_error("neither XDG_CONFIG_HOME nor HOME names a folder; set one of them");
}

std::filesystem::path homeDirectory(const Environment& environment) {
  if (const auto home = absolutePath(environment, "HOME")) return *home;
  const passwd* const user = getpwuid(geteuid());
  return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "/";
}

std::filesystem::path cacheDirectory(const Environment& environment) {
  if (const auto cache = absolutePath(environment, "XDG_CACHE_HOME")) return *cache / "quorvane";
  return homeDirectory(environment) / ".cache" / "quorvane";
}

std::filesystem::path usersData(const Environment& environment) {
  if (const auto data = absolutePath(environment, "XDG_DATA_HOME")) return *data;
  return homeDirectory(environment) / ".local" / "share";
}

std::filesystem::path dataDirectory(const Environment& environment) {
  const auto own = valueOf(environment, "QUORVANE_DATA_DIR");
  return own ? std::filesystem::absolute(*own) : usersData(environment);
}

std::filesystem::path bundleDirectory(const Environment& environment) {
  if (const auto own = valueOf(environment, "QUORVANE_BUNDLE_DIR")) {
    return std::filesystem::absolute(*own);
  }
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  const auto above = program.parent_path().parent_path();
  const auto installed = above / "share" / "quorvane";
  return std::filesystem::is_directory(installed, error) ? installed : above / "data";
}

std::filesystem::path usersApplicationsDirectory(const Environment& environment) {
  const auto own = valueOf(environment, "QUORVANE_APPLICATIONS_DIR");
  if (own) return std::filesystem::absolute(*own);
  return usersData(environment) / "quorvane" / "Applications";
}

std::filesystem::path applicationsDirectory(const Environment& environment) {
  auto users = usersApplicationsDirectory(environment);
  std::error_code error;
  if (std::filesystem::is_directory(users, error)) return users;
  return bundleDirectory(environment) / "Applications";
}

NSRect screen(const Environment& environment, NSRect usual) {
  const auto value = valueOf(environment, "QUORVANE_SCREEN");
  if (!value) return usual;
  const std::string_view text = *value;
  const std::size_t cross = text.find('x', 1);
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  if (cross == std::string_view::npos || !readNumber(text.substr(0, cross), width) ||
      !readNumber(text.substr(cross + 1), height) || width == 0 || height == 0) {
    throw std::runtime_error("QUORVANE_SCREEN is \"" + *value +
                             "\"; set it to width and height, such as 1440x900, or unset it");
  }
  return {0, 0, static_cast<double>(width), static_cast<double>(height)};
}

}  // namespace

DesktopConfiguration DesktopConfiguration::fromEnvironment() {
  return fromEnvironment([](const char* name) -> const char* { return std::getenv(name); });
}

DesktopConfiguration DesktopConfiguration::fromEnvironment(const Environment& environment) {
  DesktopConfiguration configuration;
  configuration.keyOffset = quorvane::desktop::keyOffset(environment);
  configuration.runtimeDirectory = quorvane::desktop::runtimeDirectory(environment);
  configuration.configDirectory = quorvane::desktop::configDirectory(environment);
  configuration.bundleDirectory = quorvane::desktop::bundleDirectory(environment);
  configuration.homeDirectory = quorvane::desktop::homeDirectory(environment);
  configuration.cacheDirectory = quorvane::desktop::cacheDirectory(environment);
  configuration.dataDirectory = quorvane::desktop::dataDirectory(environment);
  configuration.preferencesDirectory = configuration.configDirectory.parent_path();
  configuration.applicationsDirectory = quorvane::desktop::applicationsDirectory(environment);
  configuration.usersApplicationsDirectory =
      quorvane::desktop::usersApplicationsDirectory(environment);
  configuration.screen = quorvane::desktop::screen(environment, configuration.screen);
  return configuration;
}

}  // namespace quorvane::desktop
