#pragma once
// System V shared memory, with the calls as they are. A key has the offset added. A segment that
// another user owns or made is refused, and whatever mode is asked for, one that is made here is
// for this user alone, as under a umask of 077.

#include <sys/shm.h>
#include <sys/types.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "platform/LogSink.h"
#include "platform/SharedMemory.h"

namespace quorvane::desktop {

class SharedMemory final : public quorvane::SharedMemory {
 public:
  SharedMemory(std::uint32_t keyOffset, quorvane::LogSink& log);
  ~SharedMemory() override;
  SharedMemory(const SharedMemory&) = delete;
  SharedMemory& operator=(const SharedMemory&) = delete;

  /// With the creating flag, a segment whose maker has died is taken over; one too small for `size`
  /// is then made anew.
  int shmget(std::uint32_t key, std::size_t size, int flags) override;
  void* shmat(int id, const void* address, int flags) override;
  int shmdt(const void* address) override;
  int shmctl(int id, int command) override;
  int lastError() override { return lastError_; }
  std::size_t attachedSize(const void* address) override;

  /// Why the last creating `shmget` failed, for a person: its real key, errno and the limit.
  [[nodiscard]] std::string creationFailure() const;

  /// Removes the segments that this process made or took over.
  void removeOwnSegments();

 private:
  struct Attachment {
    const void* address;
    std::size_t size;
  };

  int failToGet(key_t key, int flags, int error);
  int fail(int error);
  int getOrCreate(key_t key, std::size_t size, int flags);
  bool removeLeftover(key_t key);
  [[nodiscard]] bool isOurs(const shmid_ds& segment) const;
  void adopt(int id);
  void logRefusal(int id);

  std::uint32_t keyOffset_;
  quorvane::LogSink& log_;
  std::vector<Attachment> attachments_;
  std::vector<int> ownSegments_;
  uid_t user_ = geteuid();  ///< asked once: asking is a system call
  std::size_t pageSize_;
  int lastError_ = 0;
  key_t notCreated_ = 0;  ///< the key as it is; 0: none has failed
  int creationError_ = 0;
  int lastRefused_ = -1;
};

}  // namespace quorvane::desktop
