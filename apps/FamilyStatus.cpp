#include "apps/FamilyStatus.h"

#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

#include "apps/FamilyFolders.h"
#include "hosts/desktop/ProcessLiveness.h"
#include "tools/checker/SharedSegments.h"

namespace quorvane {
namespace {

using std::filesystem::path;

std::uint64_t ageOf(std::int32_t pid) {
  const auto began = desktop::beginningOf(pid);
  if (!began) return 0;
  return (desktop::ticksSinceBoot() - *began) / desktop::ticksOf(std::chrono::seconds(1));
}

bool isSocket(const path& entry) {
  struct stat status {};
  return ::lstat(entry.c_str(), &status) == 0 && S_ISSOCK(status.st_mode);
}

/// A line of the system's own table, which also tells of segments that are closed to us.
std::optional<SegmentFacts> segmentIn(const std::string& line, std::uint32_t keyOffset) {
  std::istringstream words(line);
  std::int64_t key = 0;
  std::string id;
  std::string mode;
  std::int32_t lastUser = 0;
  SegmentFacts facts;
  words >> key >> id >> mode >> facts.size >> facts.maker >> lastUser >> facts.attached >>
      facts.owner;
  facts.key = static_cast<std::uint32_t>(key) - keyOffset;
  facts.keyOffset = keyOffset;
  const bool isOurs = std::ranges::count(checker::kSegments, facts.key, &checker::SegmentRow::key);
  return words && isOurs ? std::optional(facts) : std::nullopt;
}

void addEntry(const path& entry, FamilyStatus& family) {
  const std::string name = entry.filename();
  if (!isOwn(entry)) return family.refused.push_back(name);
  if (const auto process = announcedProcess(entry)) {
    family.members.push_back({*process, ageOf(process->pid)});
  }
  const auto pid = desktop::pidOfStatusFile(name);
  if (pid && desktop::isRunning(*pid)) {
    if (const auto status = desktop::readStatusFile(entry)) {
      family.inputMethods.emplace_back(*pid, *status);
    }
  }
  if (isSocket(entry)) family.ports.push_back(name);
}

FamilyStatus familyIn(const path& folder, std::uint32_t keyOffset) {
  FamilyStatus family{folder, {}, {}, {}, {}, {}};
  for (const path& entry : entriesOf(folder)) addEntry(entry, family);
  std::ranges::sort(family.members, {}, [](const auto& each) { return each.process.pid; });
  std::ranges::sort(family.ports);
  std::ranges::sort(family.refused);
  std::set<std::uint32_t> offsets;
  for (const auto& [pid, status] : family.inputMethods) {
    offsets.insert(static_cast<std::uint32_t>(status.keyOffset));
  }
  if (offsets.empty()) offsets.insert(keyOffset);
  for (const std::uint32_t offset : offsets) {
    for (const SegmentFacts& each : segmentsAt(offset)) family.segments.push_back(each);
  }
  return family;
}

}  // namespace

std::vector<SegmentFacts> segmentsAt(std::uint32_t keyOffset) {
  std::ifstream table("/proc/sysvipc/shm");
  std::vector<SegmentFacts> segments;
  for (std::string line; std::getline(table, line);) {
    const auto segment = segmentIn(line, keyOffset);
    if (segment) segments.push_back(*segment);
  }
  std::ranges::sort(segments, {}, &SegmentFacts::key);
  return segments;
}

std::vector<FamilyStatus> familiesIn(const path& runtimeFolder, std::uint32_t keyOffset) {
  std::vector<FamilyStatus> families;
  for (const path& folder : foldersOf(runtimeFolder)) {
    FamilyStatus family = familyIn(folder, keyOffset);
    const bool isEmpty =
        family.members.empty() && family.inputMethods.empty() && family.refused.empty();
    if (!isEmpty) families.push_back(std::move(family));
  }
  return families;
}

}  // namespace quorvane
