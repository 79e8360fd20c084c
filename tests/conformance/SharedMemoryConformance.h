#pragma once
// What every host's SharedMemory must do.

#include <algorithm>
#include <cerrno>

#include "tests/conformance/HostStage.h"

namespace quorvane::conformance {

class SharedMemoryConformance : public HostConformance {
 protected:
  static constexpr std::uint32_t kKey = 880;
  static constexpr int kMode = 0666;

  std::uint8_t* attach(int id) {
    void* const address = memory_.shmat(id, nullptr, kMode);
    EXPECT_NE(address, kShmFailed);
    return address == kShmFailed ? nullptr : static_cast<std::uint8_t*>(address);
  }

  SharedMemory& memory_ = platform_.sharedMemory;
};

TEST_P(SharedMemoryConformance, WithoutTheCreatingFlagOnlyAnExistingSegmentIsFound) {
  EXPECT_EQ(memory_.shmget(kKey, 376, kMode), -1);
  EXPECT_EQ(memory_.lastError(), ENOENT);
  const int id = memory_.shmget(kKey, 376, kIpcCreate | kMode);
  ASSERT_NE(id, -1);
  EXPECT_EQ(memory_.shmget(kKey, 376, kMode), id);
  EXPECT_EQ(memory_.shmget(kKey, 0, 0), id);
  EXPECT_EQ(memory_.shmget(kKey, 376, kIpcCreate | kMode), id);
  EXPECT_EQ(memory_.shmget(kKey, 2 * 4096, kMode), -1);
  EXPECT_EQ(memory_.lastError(), EINVAL);
  EXPECT_EQ(memory_.shmget(kKey + 13, 384, kMode), -1);
}

TEST_P(SharedMemoryConformance, AttachmentsSeeOneMemoryInWholePages) {
  const int id = memory_.shmget(kKey, 376, kIpcCreate | kMode);
  std::uint8_t* const one = attach(id);
  std::uint8_t* const other = attach(id);
  ASSERT_TRUE(one && other);
  EXPECT_EQ(memory_.attachedSize(one), 4096U);
  EXPECT_TRUE(std::all_of(one, one + 4096, [](std::uint8_t byte) { return byte == 0; }));
  one[392] = 'x';
  EXPECT_EQ(other[392], 'x');
  EXPECT_EQ(memory_.attachedSize(one + 1), 0U);
  EXPECT_EQ(memory_.attachedSize(nullptr), 0U);
  EXPECT_EQ(memory_.shmdt(one), 0);
  EXPECT_EQ(memory_.attachedSize(other), 4096U);
  EXPECT_EQ(memory_.shmdt(other), 0);
  EXPECT_EQ(memory_.attachedSize(other), 0U);
  EXPECT_EQ(memory_.shmdt(other), -1);
  EXPECT_EQ(attach(id)[392], 'x') << "detaching must not empty the segment";
}

TEST_P(SharedMemoryConformance, ARemovedSegmentLivesOnForThoseWhoHaveIt) {
  const int id = memory_.shmget(kKey, 376, kIpcCreate | kMode);
  std::uint8_t* const old = attach(id);
  ASSERT_NE(old, nullptr);
  old[0] = 7;
  EXPECT_EQ(memory_.shmctl(id, kIpcRemove), 0);
  EXPECT_EQ(memory_.shmget(kKey, 376, kMode), -1);
  const int next = memory_.shmget(kKey, 376, kIpcCreate | kMode);
  EXPECT_NE(next, id);
  EXPECT_EQ(old[0], 7);
  EXPECT_EQ(attach(next)[0], 0);
  EXPECT_EQ(memory_.shmdt(old), 0);
  EXPECT_EQ(memory_.shmctl(id, kIpcRemove), -1);
  EXPECT_EQ(memory_.shmat(id, nullptr, kMode), kShmFailed);
}

}  // namespace quorvane::conformance
