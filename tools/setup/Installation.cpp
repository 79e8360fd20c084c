#include "tools/setup/Installation.h"

namespace quorvane::setup {

std::optional<Installation> ownInstallation() {
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  const Installation own{program.parent_path().parent_path()};
  const bool isInstalled = std::filesystem::is_regular_file(own.component(), error);
  return isInstalled ? std::optional(own) : std::nullopt;
}

}  // namespace quorvane::setup
