#pragma once
// What runs: the processes that meet in a runtime folder, and those of every run of its own below
// it, as they show themselves. Nobody is asked, nothing is attached.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "hosts/desktop/Announcement.h"
#include "hosts/desktop/StatusFile.h"

namespace quorvane {

struct RunningMember {
  desktop::AnnouncedProcess process;
  std::uint64_t seconds = 0;  ///< since it began
};

struct SegmentFacts {
  std::uint32_t key = 0;  ///< without the offset
  std::uint32_t keyOffset = 0;
  std::uint64_t size = 0;
  std::uint32_t owner = 0;     ///< user id
  std::int32_t maker = 0;      ///< process id
  std::uint64_t attached = 0;  ///< how often
};

struct FamilyStatus {
  std::filesystem::path folder;
  std::vector<RunningMember> members;
  std::vector<std::pair<std::int32_t, desktop::InputMethodStatus>> inputMethods;  ///< by process id
  std::vector<SegmentFacts> segments;
  std::vector<std::string> ports;
  std::vector<std::string> refused;  ///< files of other users
};

/// One for each folder in which something runs. `keyOffset` is that of the runtime folder.
std::vector<FamilyStatus> familiesIn(const std::filesystem::path& runtimeFolder,
                                     std::uint32_t keyOffset);

/// Those that there are of the family's segments.
std::vector<SegmentFacts> segmentsAt(std::uint32_t keyOffset);

std::string asText(const std::vector<FamilyStatus>& families);
std::string asJSON(const std::vector<FamilyStatus>& families);

}  // namespace quorvane
