#include "hosts/desktop/StatusFile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <string>

#include "hosts/desktop/PlainFile.h"
#include "hosts/desktop/ProcessLiveness.h"

namespace quorvane::desktop {
namespace {

using Head = std::array<char, 16>;
constexpr Head kHead{'q', 'u', 'o', 'r', 'v', 'a', 'n', 'e',
                     ' ', 's', 't', 'a', 't', 'u', 's', '2'};
constexpr std::string_view kSuffix = ".status";

/// What those leave who are killed.
void removeLeftovers(const std::filesystem::path& folder) {
  std::error_code error;
  for (std::filesystem::directory_iterator each(folder, error), end; !error && each != end;
       each.increment(error)) {
    const auto pid = pidOfStatusFile(each->path().filename().native());
    if (pid && !isRunning(*pid)) ::unlink(each->path().c_str());
  }
}

}  // namespace

struct MappedStatus {
  Head head;
  std::uint64_t writings;
  InputMethodStatus status;
};

std::string_view InputMethodStatus::frontName() const {
  return {frontApplication.data(), strnlen(frontApplication.data(), frontApplication.size())};
}

StatusFile::StatusFile(const std::filesystem::path& runtimeFolder, std::int32_t pid)
    : path_(statusFileOf(runtimeFolder, pid)) {
  removeLeftovers(runtimeFolder);
  ::unlink(path_.c_str());
  const Descriptor file(
      ::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600));
  // Reserved, not only sized: a full disk would end us at the first writing otherwise.
  if (!file.valid() || ::posix_fallocate(file.get(), 0, sizeof(MappedStatus)) != 0) return;
  void* const address =
      ::mmap(nullptr, sizeof(MappedStatus), PROT_READ | PROT_WRITE, MAP_SHARED, file.get(), 0);
  if (address == MAP_FAILED) return;
  mapped_ = static_cast<MappedStatus*>(address);
  mapped_->head = kHead;
}

StatusFile::~StatusFile() {
  if (mapped_ == nullptr) return;
  ::munmap(mapped_, sizeof(MappedStatus));
  ::unlink(path_.c_str());
}

void StatusFile::write(const InputMethodStatus& status) {
  if (mapped_ == nullptr) return;
  const std::atomic_ref writings(mapped_->writings);
  writings.fetch_add(1, std::memory_order_acquire);
  std::atomic_thread_fence(std::memory_order_release);
  mapped_->status = status;
  writings.fetch_add(1, std::memory_order_release);
}

std::filesystem::path statusFileOf(const std::filesystem::path& runtimeFolder, std::int32_t pid) {
  return runtimeFolder / std::to_string(pid).append(kSuffix);
}

std::optional<std::int32_t> pidOfStatusFile(std::string_view fileName) {
  if (!fileName.ends_with(kSuffix)) return {};
  fileName.remove_suffix(kSuffix.size());
  std::int32_t pid = 0;
  const auto [end, error] = std::from_chars(fileName.begin(), fileName.end(), pid);
  const bool isNumber = error == std::errc() && end == fileName.end() && pid > 0;
  return isNumber ? std::optional(pid) : std::nullopt;
}

/// A copy is whole where nobody wrote before or while it was made.
std::optional<InputMethodStatus> readStatusFile(const std::filesystem::path& path) {
  constexpr int kAttempts = 100;
  constexpr std::size_t kWritings = sizeof(Head);
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const auto first = readPlainFile(path, sizeof(MappedStatus), Whose::Own);
    const auto second = readPlainFile(path, sizeof(MappedStatus), Whose::Own);
    if (!first || !second || first->size() != sizeof(MappedStatus)) return {};
    if (!std::equal(kHead.begin(), kHead.end(), first->begin())) return {};
    if ((first->at(kWritings) & 1) != 0 || *first != *second) continue;
    InputMethodStatus status;
    std::memcpy(&status, first->data() + offsetof(MappedStatus, status), sizeof status);
    return status;
  }
  return {};
}

}  // namespace quorvane::desktop
