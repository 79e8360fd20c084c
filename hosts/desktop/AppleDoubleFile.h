#pragma once
// The file `._name` beside a file: read whole, and replaced as a whole. Who replaces it holds the
// lock of the file `._name.lock`, which stays, and goes by what he reads under it. So two processes
// that write at once lose nothing of each other.

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "hosts/resources/AppleDouble.h"

namespace quorvane::desktop {

/// Of a command that somebody waits for; a key waits far less.
inline constexpr std::chrono::milliseconds kCommandsPatience{500};

/// Held until the last owner goes; null where it can't be had in that time.
std::shared_ptr<void> lockAppleDouble(const std::filesystem::path& file,
                                      std::chrono::milliseconds patience);

/// No bytes where there is none; none where it can't be read.
std::optional<resources::Bytes> readAppleDoubleFile(const std::filesystem::path& file);

/// Under the lock. Temporary file, fsync, rename, fsync of the folder; false, with errno set,
/// leaves what stood there.
bool replaceAppleDoubleFile(const std::filesystem::path& file, resources::ByteView content);

/// All of it: lock, read, change, replace. Throws std::runtime_error, with a message that names the
/// file and the reason; what `change` throws leaves the file as it was.
void updateAppleDouble(const std::filesystem::path& file,
                       const std::function<void(resources::AppleDouble&)>& change);

}  // namespace quorvane::desktop
