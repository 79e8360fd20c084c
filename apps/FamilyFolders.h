#pragma once
// The runtime folder, and the folders of private runs in it.

#include <filesystem>
#include <optional>
#include <vector>

#include "hosts/desktop/Announcement.h"

namespace quorvane {

/// None where the folder can't be read.
std::vector<std::filesystem::path> entriesOf(const std::filesystem::path& folder);
/// False for what another user has put there: it tells of nobody.
bool isOwn(const std::filesystem::path& entry);
/// The folder and those of private runs in it.
std::vector<std::filesystem::path> foldersOf(const std::filesystem::path& runtimeFolder);

/// A small file of others; empty where it can't be had.
std::string contentOf(const std::filesystem::path& file);
/// Whom an announcement tells of, if that runs; none for any other entry.
std::optional<desktop::AnnouncedProcess> announcedProcess(const std::filesystem::path& entry);

}  // namespace quorvane
