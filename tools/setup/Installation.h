#pragma once
// What lies below the prefix that the program was installed in.

#include <filesystem>
#include <optional>

namespace quorvane::setup {

struct Installation {
  std::filesystem::path prefix;

  [[nodiscard]] std::filesystem::path program() const { return prefix / "bin/quorvane"; }
  [[nodiscard]] std::filesystem::path componentFolder() const {
    return prefix / "share/ibus/component";
  }
  [[nodiscard]] std::filesystem::path component() const {
    return componentFolder() / "quorvane.xml";
  }
  [[nodiscard]] std::filesystem::path unit() const {
    return prefix / "lib/systemd/user/quorvane.service";
  }
  [[nodiscard]] std::filesystem::path environment() const {
    return prefix / "lib/environment.d/60-quorvane.conf";
  }
  /// systemd looks into it by itself.
  [[nodiscard]] bool isKnownToSystemd() const { return prefix == "/usr" || prefix == "/usr/local"; }
};

/// Of the program that runs; none where it wasn't installed, as in the folder it was built in.
std::optional<Installation> ownInstallation();

}  // namespace quorvane::setup
