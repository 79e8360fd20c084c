#include "hosts/memory/MemorySharedMemory.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "src/base/BigEndian.h"

#if defined(__SANITIZE_ADDRESS__)
#define QUORVANE_POISON 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUORVANE_POISON 1
#endif
#endif
#ifdef QUORVANE_POISON
#include <sanitizer/asan_interface.h>
#endif

namespace quorvane::memory {
namespace {

constexpr std::size_t kPage = 4096;

std::size_t roundedUp(std::size_t size) { return (size + kPage - 1) / kPage * kPage; }

void setReachable([[maybe_unused]] const std::uint8_t* bytes, [[maybe_unused]] std::size_t count,
                  [[maybe_unused]] bool reachable) {
#ifdef QUORVANE_POISON
  if (reachable) {
    ASAN_UNPOISON_MEMORY_REGION(bytes, count);
  } else {
    ASAN_POISON_MEMORY_REGION(bytes, count);
  }
#endif
}

}  // namespace

/// The script's view of a segment, for as long as it lives.
class MemorySharedMemory::Access {
 public:
  explicit Access(const Segment& segment) : segment_(segment) {
    setReachable(segment_.bytes.get(), segment_.extent, true);
  }
  ~Access() {
    if (segment_.attachments == 0) setReachable(segment_.bytes.get(), segment_.extent, false);
  }
  Access(const Access&) = delete;
  Access& operator=(const Access&) = delete;

 private:
  const Segment& segment_;
};

MemorySharedMemory::~MemorySharedMemory() {
  for (const auto& [id, segment] : segments_) {
    setReachable(segment.bytes.get(), segment.extent, true);
  }
}

int MemorySharedMemory::shmget(std::uint32_t key, std::size_t size, int flags) {
  const std::size_t line = journal_.call("shmget ", key, " ", size, " ", Journal::Octal{flags});
  const auto perform = [&]() -> int {
    const std::optional<int> id = find(key);
    if (!id) {
      if ((flags & kIpcCreate) == 0) return fail(kEnoent);
      return size == 0 ? fail(kEinval) : create(key, size);
    }
    const Segment& found = segments_.at(*id);
    if (found.options.refused) return fail(kEacces);
    return size > found.size ? fail(kEinval) : *id;
  };
  return journal_.result(line, perform());
}

void* MemorySharedMemory::shmat(int id, const void* /*address*/, int flags) {
  const std::size_t line = journal_.call("shmat ", id, " ", Journal::Octal{flags});
  Segment* const found = segment(id);
  AttachFailure failure = AttachFailure::None;
  if (found) {
    const auto told = attachFailures_.find(found->key);
    if (told != attachFailures_.end()) failure = told->second;
  }
  if (!found || found->options.stranger || failure == AttachFailure::Failed) {
    fail(found ? kEacces : kEinval);
    journal_.result(line, std::string_view("failed"));
    return kShmFailed;
  }
  if (failure == AttachFailure::Null) {
    journal_.result(line, std::string_view("null"));
    return nullptr;
  }
  ++found->attachments;
  setReachable(found->bytes.get(), found->extent, true);
  journal_.result(line, std::string_view("attached"));
  return found->bytes.get();
}

int MemorySharedMemory::shmdt(const void* address) {
  journal_.count();
  const auto where = attachedAt(address);
  if (where == segments_.end()) {
    journal_.note("shmdt - -> -1");
    return fail(kEinval);
  }
  journal_.note("shmdt ", where->first, " -> 0");
  --where->second.attachments;
  release(where);
  return 0;
}

int MemorySharedMemory::shmctl(int id, int command) {
  const std::size_t line = journal_.call("shmctl ", id, " ", command);
  if (command != kIpcRemove || !segment(id)) return journal_.result(line, fail(kEinval));
  remove(id);
  return journal_.result(line, 0);
}

int MemorySharedMemory::lastError() {
  journal_.count();
  return lastError_;
}

std::size_t MemorySharedMemory::attachedSize(const void* address) {
  journal_.count();
  const auto where = attachedAt(address);
  return where == segments_.end() ? 0 : where->second.extent;
}

int MemorySharedMemory::create(std::uint32_t key, std::size_t size, const SegmentOptions& options) {
  if (const std::optional<int> old = find(key)) remove(*old);
  const int id = nextId_++;
  Segment& made = segments_[id];
  made.key = key;
  made.size = size;
  made.extent = options.wholePages ? roundedUp(size) : size;
  made.options = options;
  made.bytes = std::make_unique<std::uint8_t[]>(made.extent);
  setReachable(made.bytes.get(), made.extent, false);
  return id;
}

void MemorySharedMemory::remove(int id) {
  const auto where = segments_.find(id);
  if (where == segments_.end()) return;
  where->second.removed = true;
  release(where);
}

std::optional<int> MemorySharedMemory::find(std::uint32_t key) const {
  for (const auto& [id, candidate] : segments_) {
    if (candidate.key == key && !candidate.removed) return id;
  }
  return std::nullopt;
}

std::vector<std::uint8_t> MemorySharedMemory::read(int id, std::size_t offset,
                                                   std::size_t count) const {
  const Segment* const found = segment(id);
  if (!found || offset >= found->extent) return {};
  const Access access(*found);
  const std::uint8_t* const start = found->bytes.get() + offset;
  return {start, start + std::min(count, found->extent - offset)};
}

std::uint32_t MemorySharedMemory::readWord(int id, std::size_t offset) const {
  const Segment* const found = segment(id);
  if (!found || offset + 4 > found->extent) return 0;
  const Access access(*found);
  return bigEndianNumber<std::uint32_t>({found->bytes.get(), found->extent}, offset);
}

void MemorySharedMemory::write(int id, std::size_t offset, std::span<const std::uint8_t> bytes) {
  Segment* const found = segment(id);
  if (!found || offset >= found->extent) return;
  const Access access(*found);
  std::copy_n(bytes.begin(), std::min(bytes.size(), found->extent - offset),
              found->bytes.get() + offset);
}

void MemorySharedMemory::writeWord(int id, std::size_t offset, std::uint32_t value) {
  std::array<std::uint8_t, sizeof(value)> bytes{};
  putBigEndian(bytes, 0, value);
  write(id, offset, bytes);
}

std::size_t MemorySharedMemory::attachments(int id) const {
  const Segment* const found = segment(id);
  return found ? found->attachments : 0;
}

std::size_t MemorySharedMemory::totalAttachments() const {
  std::size_t total = 0;
  for (const auto& [id, candidate] : segments_) total += candidate.attachments;
  return total;
}

int MemorySharedMemory::fail(int error) {
  lastError_ = error;
  return -1;
}

const MemorySharedMemory::Segment* MemorySharedMemory::segment(int id) const {
  const auto where = segments_.find(id);
  return where == segments_.end() ? nullptr : &where->second;
}

MemorySharedMemory::Segment* MemorySharedMemory::segment(int id) {
  const auto where = segments_.find(id);
  return where == segments_.end() ? nullptr : &where->second;
}

std::map<int, MemorySharedMemory::Segment>::iterator MemorySharedMemory::attachedAt(
    const void* address) {
  return std::find_if(segments_.begin(), segments_.end(), [address](const auto& entry) {
    return entry.second.attachments > 0 && entry.second.bytes.get() == address;
  });
}

void MemorySharedMemory::release(std::map<int, Segment>::iterator where) {
  Segment& released = where->second;
  if (released.attachments > 0) return;
  setReachable(released.bytes.get(), released.extent, released.removed);
  if (released.removed) segments_.erase(where);
}

}  // namespace quorvane::memory
