#pragma once
// Files that a reader sees either as they were or as they are meant to be.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string_view>

#include "platform/LogSink.h"

namespace quorvane::desktop {

enum class Durability {
  UntilReboot,  ///< for what describes running processes, or can be made again
  Lasting       ///< on the disk before the new content shows
};

/// What a file is to hold, one after the other.
using FileParts = std::span<const std::string_view>;

/// Writes a temporary file beside `path`, mode 0600, and renames it. False, with errno set, where
/// that fails; what stood there then still stands.
bool writeFileAtomically(const std::filesystem::path& path, FileParts parts, Durability durability);
inline bool writeFileAtomically(const std::filesystem::path& path, std::string_view content,
                                Durability durability) {
  return writeFileAtomically(path, FileParts(&content, 1), durability);
}

struct Temporary {
  std::string_view target;
  std::int32_t writer = 0;
};
/// What the name ".NAME.PID.new" of such a temporary file says, a part of it; none in any other.
std::optional<Temporary> temporaryOf(std::string_view name);

/// The same, with the folders on the way, mode 0700. A failure is logged.
bool saveFile(const std::filesystem::path& path, FileParts parts, Durability durability,
              quorvane::LogSink& log);

}  // namespace quorvane::desktop
