#pragma once
// System V shared memory, as <sys/shm.h> has it.

#include "platform/MacTypes.h"

namespace quorvane {

/// What shmat gives on failure: (void*)-1.
inline void* const kShmFailed = reinterpret_cast<void*>(~std::uintptr_t{0});
inline constexpr int kIpcCreate = 01000;  ///< IPC_CREAT in the octal notation of the calls
inline constexpr int kIpcRemove = 0;      ///< IPC_RMID

/// A host may add an offset to every key, and refuses to attach a segment that another user owns.
class SharedMemory {
 public:
  virtual ~SharedMemory() = default;

  /// Segment id, or -1 with the reason in `lastError`.
  virtual int shmget(std::uint32_t key, std::size_t size, int flags) = 0;
  /// Address, or kShmFailed.
  virtual void* shmat(int id, const void* address, int flags) = 0;
  /// 0, or -1 where `address` is attached nowhere.
  virtual int shmdt(const void* address) = 0;
  virtual int shmctl(int id, int command) = 0;
  /// errno of the last call that failed.
  virtual int lastError() = 0;
  /// How many bytes from `address` may be touched: a segment's size rounded up to whole pages. 0
  /// where it is no attachment of ours. Makes no system call.
  virtual std::size_t attachedSize(const void* address) = 0;
};

}  // namespace quorvane
