#include "apps/Segments.h"

#include <sys/ipc.h>
#include <sys/shm.h>
#include <unistd.h>

#include "tools/checker/SharedSegments.h"

namespace quorvane {
std::vector<std::uint32_t> removeSegments(std::uint32_t keyOffset, InUse inUse) {
  std::vector<std::uint32_t> used;
  for (const auto& [key, size] : checker::kSegments) {
    const int id = shmget(static_cast<key_t>(key + keyOffset), 0, 0);
    shmid_ds info{};
    if (id < 0 || shmctl(id, IPC_STAT, &info) != 0 || info.shm_segsz != size) continue;
    if (info.shm_perm.uid != geteuid()) continue;
    if (inUse == InUse::Keep && info.shm_nattch != 0) {
      used.push_back(key);
    } else {
      shmctl(id, IPC_RMID, nullptr);
    }
  }
  return used;
}

}  // namespace quorvane
