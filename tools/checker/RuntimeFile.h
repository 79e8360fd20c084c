#pragma once
// A small file of the runtime folder by which one process tells others what it shows: whole, or not
// there.

#include <filesystem>
#include <optional>
#include <string>

namespace quorvane::checker {

/// Mode 0600. False where there is no content or it can't be written; no file stands there then.
bool putRuntimeFile(const std::filesystem::path& file, const std::optional<std::string>& content);
void removeRuntimeFile(const std::filesystem::path& file);
/// Empty where it isn't there, is a link or no plain file, or has more than `limit` bytes.
std::optional<std::string> readRuntimeFile(const std::filesystem::path& file, std::size_t limit);

}  // namespace quorvane::checker
