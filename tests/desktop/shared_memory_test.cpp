// Segments of strangers, leftovers of the dead, and what is left behind.

#include <gtest/gtest.h>
#include <sys/shm.h>

#include <cerrno>
#include <fstream>

#include "tests/support/DesktopStage.h"

namespace quorvane::desktop {
namespace {

class DesktopSharedMemory : public testing::Test {
 protected:
  ~DesktopSharedMemory() override {
    if (rawId() >= 0) ::shmctl(rawId(), IPC_RMID, nullptr);
  }
  quorvane::SharedMemory& memory() { return stage_.platform().sharedMemory; }
  int create(std::size_t size = 376) { return memory().shmget(880, size, kIpcCreate | 0666); }
  [[nodiscard]] int rawId() const {
    return ::shmget(static_cast<key_t>(880 + stage_.configuration().keyOffset), 0, 0);
  }
  /// What a main application leaves that is killed after it has made its segment.
  void leaveSegment(std::size_t size, std::uint8_t content) {
    const tests::Child dead([&] {
      auto* const address = static_cast<std::uint8_t*>(memory().shmat(create(size), nullptr, 0666));
      address[0] = content;
    });
  }

  tests::DesktopStage stage_;
};

TEST_F(DesktopSharedMemory, AStrangersSegmentIsRefusedAndLogged) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can give a segment away";
  const int id = create();
  shmid_ds segment{};
  ASSERT_EQ(::shmctl(id, IPC_STAT, &segment), 0);
  segment.shm_perm.uid = 12345;
  ASSERT_EQ(::shmctl(id, IPC_SET, &segment), 0);
  EXPECT_EQ(memory().shmat(id, nullptr, 0666), kShmFailed);
  EXPECT_EQ(memory().lastError(), EACCES);
  EXPECT_EQ(memory().shmat(create(), nullptr, 0666), kShmFailed);
  EXPECT_EQ(::shmctl(id, IPC_STAT, &segment), 0);
  EXPECT_EQ(segment.shm_nattch, 0U);
}

TEST_F(DesktopSharedMemory, ALeftoverIsTakenOverWithItsContentAndRemovedAtTheEnd) {
  leaveSegment(376, 42);
  ASSERT_GE(rawId(), 0);
  const int id = create();
  EXPECT_EQ(id, rawId());
  shmid_ds segment{};
  EXPECT_EQ(::shmctl(id, IPC_STAT, &segment), 0);
  EXPECT_EQ(segment.shm_perm.mode & 0777, 0600) << "whatever mode its maker asked for";
  EXPECT_EQ(*static_cast<std::uint8_t*>(memory().shmat(id, nullptr, 0666)), 42);
  stage_.closeHost();
  EXPECT_EQ(rawId(), -1);
}

TEST_F(DesktopSharedMemory, ALeftoverThatIsTooSmallIsMadeAnew) {
  leaveSegment(8, 42);
  const int id = create(5000);
  ASSERT_NE(id, -1);
  void* const address = memory().shmat(id, nullptr, 0666);
  EXPECT_EQ(memory().attachedSize(address), 8192U);
}

TEST_F(DesktopSharedMemory, TheSegmentOfALivingProcessStays) {
  const tests::Child living([this] { create(); });
  EXPECT_EQ(create(), rawId());
  EXPECT_EQ(create(5000), -1) << "it must not be replaced under its owner";
  stage_.closeHost();
  EXPECT_GE(rawId(), 0);
}

}  // namespace
}  // namespace quorvane::desktop
