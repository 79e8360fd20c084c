#pragma once
// System V segments in memory, seen from two sides: the platform's (the input method attaches) and
// a script's, which stands for the other process and reads and writes by segment id.

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "hosts/journal/Journal.h"
#include "platform/SharedMemory.h"

namespace quorvane::memory {

inline constexpr int kEnoent = 2;
inline constexpr int kEacces = 13;
inline constexpr int kEinval = 22;

enum class AttachFailure { None, Failed, Null };

/// How a script makes a segment.
struct SegmentOptions {
  bool wholePages = true;  ///< false: exactly so many bytes may be touched, for bounds tests
  bool refused = false;    ///< shmget fails with EACCES
  bool stranger = false;   ///< another user's: attaching fails with EACCES
};

/// A segment that is removed goes when its last attachment goes, and its key is free at once. With
/// the address sanitizer on, memory that isn't attached is poisoned.
class MemorySharedMemory : public SharedMemory {
 public:
  explicit MemorySharedMemory(Journal& journal) : journal_(journal) {}
  ~MemorySharedMemory() override;

  int shmget(std::uint32_t key, std::size_t size, int flags) override;
  void* shmat(int id, const void* address, int flags) override;
  int shmdt(const void* address) override;
  int shmctl(int id, int command) override;
  int lastError() override;
  std::size_t attachedSize(const void* address) override;

  // The script's side. Nothing of it is recorded.
  /// Makes a segment of zeroes; one that had the key is removed first. Returns its id.
  int create(std::uint32_t key, std::size_t size, const SegmentOptions& options = {});
  void remove(int id);
  /// Id of the segment that has the key now.
  [[nodiscard]] std::optional<int> find(std::uint32_t key) const;
  /// What lies there, cut at the segment's end; empty for a segment that is gone.
  [[nodiscard]] std::vector<std::uint8_t> read(int id, std::size_t offset, std::size_t count) const;
  /// Big-endian; 0 outside the segment.
  [[nodiscard]] std::uint32_t readWord(int id, std::size_t offset) const;
  /// Cut at the segment's end.
  void write(int id, std::size_t offset, std::span<const std::uint8_t> bytes);
  /// Big-endian.
  void writeWord(int id, std::size_t offset, std::uint32_t value);
  /// How often the platform's side holds it.
  [[nodiscard]] std::size_t attachments(int id) const;
  [[nodiscard]] std::size_t totalAttachments() const;
  /// For every later shmat of the key, until set back.
  void failAttach(std::uint32_t key, AttachFailure failure) { attachFailures_[key] = failure; }

 private:
  struct Segment {
    std::uint32_t key = 0;
    std::size_t size = 0;    ///< as asked for
    std::size_t extent = 0;  ///< what may be touched
    SegmentOptions options;
    std::unique_ptr<std::uint8_t[]> bytes;
    std::size_t attachments = 0;
    bool removed = false;
  };
  class Access;
  int fail(int error);
  [[nodiscard]] const Segment* segment(int id) const;
  Segment* segment(int id);
  std::map<int, Segment>::iterator attachedAt(const void* address);
  void release(std::map<int, Segment>::iterator where);

  Journal& journal_;
  std::map<int, Segment> segments_;
  std::map<std::uint32_t, AttachFailure> attachFailures_;
  int nextId_ = 1;
  int lastError_ = 0;
};

}  // namespace quorvane::memory
