#pragma once
// The folder where the processes of the family meet: sockets of the message ports and announcements
// of running applications.

#include <chrono>
#include <filesystem>
#include <string_view>

#include "hosts/desktop/Descriptor.h"

namespace quorvane::desktop {

class RuntimeFolder {
 public:
  /// Makes the folder with mode 0700 where it is missing. Throws std::runtime_error, with a message
  /// that says what to do, where it can't be made, belongs to somebody else, is open to others, is
  /// closed to ourselves, or its path leaves no room for the name of a port.
  explicit RuntimeFolder(std::filesystem::path path);

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  [[nodiscard]] std::filesystem::path operator/(std::string_view name) const {
    return path_ / name;
  }

  /// Keeps other processes from taking over leftovers at the same time, until the result goes.
  /// Throws std::runtime_error where somebody holds it for longer than `patience`, which no run
  /// loop turns in.
  [[nodiscard]] Descriptor lock(
      std::chrono::milliseconds patience = std::chrono::milliseconds(1000)) const;
  /// The right to be the input method of the segments at `keyOffset`: two would damage each other's
  /// texts. Held as long as the result, and as its process at the longest, however that ends.
  /// Invalid where another process holds it. Throws std::runtime_error where it can't be asked for.
  [[nodiscard]] Descriptor claimSegments(std::uint32_t keyOffset) const;

 private:
  [[nodiscard]] Descriptor openLockFile() const;

  std::filesystem::path path_;
};

}  // namespace quorvane::desktop
