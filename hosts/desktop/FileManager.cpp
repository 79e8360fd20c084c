#include "hosts/desktop/FileManager.h"

#include <sys/mman.h>
#include <sys/stat.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "hosts/desktop/AtomicFile.h"
#include "hosts/desktop/PlainFile.h"

namespace quorvane::desktop {
namespace {

using Bytes = std::span<const std::uint8_t>;

class ReadData final : public FileData {
 public:
  ReadData(std::unique_ptr<std::uint8_t[]> content, std::size_t size)
      : content_(std::move(content)), size_(size) {}
  [[nodiscard]] Bytes bytes() const override { return {content_.get(), size_}; }

 private:
  std::unique_ptr<std::uint8_t[]> content_;
  std::size_t size_;
};

class MappedData final : public FileData {
 public:
  MappedData(void* start, std::size_t size) : start_(start), size_(size) {}
  ~MappedData() override { munmap(start_, size_); }
  MappedData(const MappedData&) = delete;
  MappedData& operator=(const MappedData&) = delete;
  [[nodiscard]] Bytes bytes() const override {
    return {static_cast<const std::uint8_t*>(start_), size_};
  }

 private:
  void* start_;
  std::size_t size_;
};

}  // namespace

FileManager::FileManager(std::filesystem::path home, std::filesystem::path caches,
                         SpecialFolders folders, quorvane::LogSink& log)
    : home_(std::move(home)), caches_(std::move(caches)), folders_(std::move(folders)), log_(log) {}

std::optional<FileAttributes> FileManager::attributesOfItemAtPath(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
  return FileAttributes{
      static_cast<std::uint64_t>(status.st_size),
      std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec, status.st_ino};
}

std::unique_ptr<FileData> FileManager::dataWithContentsOfFile(const std::string& path) {
  const PlainFile opened = openPlainFile(path, kLargestFile);
  if (!opened.file.valid()) return nullptr;
  auto content =
      std::make_unique_for_overwrite<std::uint8_t[]>(opened.size + FileData::kReadableBehind);
  const auto size = readWhole(opened.file.get(), content.get(), opened.size);
  if (!size) return nullptr;
  std::fill_n(content.get() + *size, FileData::kReadableBehind, std::uint8_t{0});
  return std::make_unique<ReadData>(std::move(content), *size);
}

std::unique_ptr<FileData> FileManager::dataWithContentsOfMappedFile(const std::string& path) {
  const PlainFile opened = openPlainFile(path, kLargestFile);
  if (!opened.file.valid()) return nullptr;
  if (opened.size == 0) return std::make_unique<ReadData>(nullptr, 0);  // can't be mapped
  void* const start = mmap(nullptr, opened.size, PROT_READ, MAP_PRIVATE, opened.file.get(), 0);
  if (start == MAP_FAILED) return nullptr;
  return std::make_unique<MappedData>(start, opened.size);
}

std::optional<std::u16string> FileManager::stringWithContentsOfFile(const std::string& path) {
  const auto data = dataWithContentsOfFile(path);
  if (data == nullptr) return {};
  return encoding_.initWithData(data->bytes(), NSStringEncoding::UTF8);
}

bool FileManager::writeToFile(const std::string& path, std::span<const Bytes> parts) {
  std::vector<std::string_view> texts;
  for (const Bytes part : parts) {
    texts.emplace_back(reinterpret_cast<const char*>(part.data()), part.size());
  }
  return saveFile(path, texts, Durability::UntilReboot, log_);
}

}  // namespace quorvane::desktop
