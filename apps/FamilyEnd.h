#pragma once
// The end of all processes that meet in a runtime folder, and of what they have left.

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace quorvane {

struct FamilyEnd {
  std::size_t processes = 0;         ///< so many have ended
  std::vector<std::string> remains;  ///< what couldn't be ended or removed, in words
};

/// Asks every process of the family to end, those of private runs below the folder too, insists
/// after two seconds, and removes segments, sockets, files and, where nothing else lies in it, the
/// folder. Where somebody can't be ended nothing is removed. Throws std::runtime_error where the
/// folder isn't this user's own.
FamilyEnd endFamily(const std::filesystem::path& runtimeFolder, std::uint32_t keyOffset);

}  // namespace quorvane
