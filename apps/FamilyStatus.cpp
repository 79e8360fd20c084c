#include "apps/FamilyStatus.h"

#include <sys/ipc.h>
#include <sys/shm.h>
#include <sys/stat.h>

#include <algorithm>
#include <set>

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

void addSegments(std::uint32_t keyOffset, std::vector<SegmentFacts>& segments) {
  for (const checker::SegmentRow& segment : checker::kSegments) {
    const int id = ::shmget(static_cast<key_t>(segment.key + keyOffset), 0, 0);
    shmid_ds info{};
    if (id < 0 || ::shmctl(id, IPC_STAT, &info) != 0) continue;
    segments.push_back({segment.key, keyOffset, info.shm_segsz, info.shm_perm.uid, info.shm_cpid,
                        info.shm_nattch});
  }
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
  for (const std::uint32_t offset : offsets) addSegments(offset, family.segments);
  return family;
}

}  // namespace

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
