#include "hosts/desktop/SharedMemory.h"

#include <sys/ipc.h>
#include <sys/shm.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>

#include "hosts/desktop/ProcessLiveness.h"

namespace quorvane::desktop {
namespace {

static_assert(kIpcCreate == IPC_CREAT && kIpcRemove == IPC_RMID);

constexpr int kModeOfOthers = 077;

/// The kernel's limits that an error of `shmget` may mean.
std::string limitBehind(int error) {
  shminfo limits{};
  ::shmctl(0, IPC_INFO, reinterpret_cast<shmid_ds*>(&limits));
  if (error == EINVAL) {
    return " (kernel.shmmax is " + std::to_string(limits.shmmax) +
           " bytes; a segment that is there keeps its size)";
  }
  if (error != ENOSPC) return {};
  return " (kernel.shmmni is " + std::to_string(limits.shmmni) + " segments, kernel.shmall " +
         std::to_string(limits.shmall) + " pages)";
}

bool madeByNobodyElse(const shmid_ds& segment) {
  return segment.shm_cpid == getpid() || !isRunning(segment.shm_cpid);
}

}  // namespace

SharedMemory::SharedMemory(std::uint32_t keyOffset, quorvane::LogSink& log)
    : keyOffset_(keyOffset), log_(log), pageSize_(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))) {
  attachments_.reserve(16);
}

SharedMemory::~SharedMemory() { removeOwnSegments(); }

int SharedMemory::shmget(std::uint32_t key, std::size_t size, int flags) {
  const auto shifted = static_cast<key_t>(key + keyOffset_);
  if (shifted == IPC_PRIVATE) return fail(ENOENT);
  const int id = getOrCreate(shifted, size, flags & ~kModeOfOthers);
  if (id < 0) return failToGet(shifted, flags, errno);
  if ((flags & kIpcCreate) != 0) adopt(id);
  return id;
}

void* SharedMemory::shmat(int id, const void* address, int flags) {
  shmid_ds segment{};
  if (::shmctl(id, IPC_STAT, &segment) != 0) {
    fail(errno);
    return kShmFailed;
  }
  if (!isOurs(segment)) {
    logRefusal(id);
    fail(EACCES);
    return kShmFailed;
  }
  void* const attached = ::shmat(id, address, flags);
  if (attached == kShmFailed) {
    fail(errno);
    return kShmFailed;
  }
  const std::size_t pages = (segment.shm_segsz + pageSize_ - 1) / pageSize_;
  attachments_.push_back({attached, pages * pageSize_});
  return attached;
}

int SharedMemory::shmdt(const void* address) {
  if (::shmdt(address) != 0) return fail(errno);
  const auto found = std::ranges::find(attachments_, address, &Attachment::address);
  if (found != attachments_.end()) {
    *found = attachments_.back();
    attachments_.pop_back();
  }
  return 0;
}

int SharedMemory::shmctl(int id, int command) {
  if (command != kIpcRemove) return fail(EINVAL);
  if (::shmctl(id, IPC_RMID, nullptr) != 0) return fail(errno);
  std::erase(ownSegments_, id);
  return 0;
}

std::size_t SharedMemory::attachedSize(const void* address) {
  const auto found = std::ranges::find(attachments_, address, &Attachment::address);
  return found == attachments_.end() ? 0 : found->size;
}

void SharedMemory::removeOwnSegments() {
  for (const int id : ownSegments_) ::shmctl(id, IPC_RMID, nullptr);
  ownSegments_.clear();
}

std::string SharedMemory::creationFailure() const {
  if (notCreated_ == 0) return {};
  return "shmget of key " + std::to_string(static_cast<std::uint32_t>(notCreated_)) + ": " +
         std::strerror(creationError_) + limitBehind(creationError_);
}

int SharedMemory::failToGet(key_t key, int flags, int error) {
  if ((flags & kIpcCreate) != 0) {
    notCreated_ = key;
    creationError_ = error;
  }
  return fail(error);
}

int SharedMemory::fail(int error) {
  lastError_ = error;
  return -1;
}

int SharedMemory::getOrCreate(key_t key, std::size_t size, int flags) {
  const int id = ::shmget(key, size, flags);
  const bool tooSmall = id < 0 && errno == EINVAL && (flags & kIpcCreate) != 0;
  if (!tooSmall) return id;
  if (!removeLeftover(key)) {
    errno = EINVAL;
    return -1;
  }
  return ::shmget(key, size, flags);
}

bool SharedMemory::removeLeftover(key_t key) {
  shmid_ds segment{};
  const int id = ::shmget(key, 0, 0);
  if (id < 0 || ::shmctl(id, IPC_STAT, &segment) != 0) return false;
  if (!isOurs(segment) || !madeByNobodyElse(segment)) return false;
  return shmctl(id, kIpcRemove) == 0;
}

/// The maker keeps every right, whoever it has named as the owner.
bool SharedMemory::isOurs(const shmid_ds& segment) const {
  return segment.shm_perm.uid == user_ && segment.shm_perm.cuid == user_;
}

void SharedMemory::adopt(int id) {
  shmid_ds segment{};
  if (::shmctl(id, IPC_STAT, &segment) != 0) return;
  if (!isOurs(segment) || !madeByNobodyElse(segment)) return;
  if (std::ranges::find(ownSegments_, id) == ownSegments_.end()) ownSegments_.push_back(id);
}

/// Once for each segment: a stranger's one is met again at every key.
void SharedMemory::logRefusal(int id) {
  if (id == lastRefused_ || !log_.enabled) return;
  lastRefused_ = id;
  log_.writeLine("shared memory: segment " + std::to_string(id) +
                 " belongs to another user and is refused; set QUORVANE_KEY_OFFSET to stay clear "
                 "of it");
}

}  // namespace quorvane::desktop
