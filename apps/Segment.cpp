#include "apps/Segment.h"

namespace quorvane {

Segment::Segment(SharedMemory& memory, std::uint32_t key) : memory_(memory) {
  const int id = memory.shmget(key, 0, 0);
  void* const address = id < 0 ? kShmFailed : memory.shmat(id, nullptr, 0);
  if (address == kShmFailed) return;
  address_ = address;
  size_ = memory.attachedSize(address);
}

Segment::~Segment() {
  if (address_ != nullptr) memory_.shmdt(address_);
}

}  // namespace quorvane
