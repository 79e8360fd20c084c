#pragma once
// Files of the disk. Only plain files are opened, so that nothing blocks that bears a file's name.

#include <filesystem>

#include "hosts/icu/IcuTextEncoding.h"
#include "platform/FileManager.h"
#include "platform/LogSink.h"

namespace quorvane::desktop {

class FileManager final : public quorvane::FileManager {
 public:
  /// A larger file can't be read.
  static constexpr std::uint64_t kLargestFile = std::uint64_t{1} << 28;

  FileManager(std::filesystem::path home, std::filesystem::path caches, quorvane::LogSink& log);

  std::string NSHomeDirectory() override { return home_.string(); }
  std::string cachesDirectory() override { return caches_.string(); }
  std::optional<FileAttributes> attributesOfItemAtPath(const std::string& path) override;
  std::unique_ptr<FileData> dataWithContentsOfFile(const std::string& path) override;
  std::unique_ptr<FileData> dataWithContentsOfMappedFile(const std::string& path) override;
  std::optional<std::u16string> stringWithContentsOfFile(const std::string& path) override;
  /// A failure is logged.
  bool writeToFile(const std::string& path,
                   std::span<const std::span<const std::uint8_t>> parts) override;

 private:
  std::filesystem::path home_;
  std::filesystem::path caches_;
  quorvane::LogSink& log_;
  IcuTextEncoding encoding_;
};

}  // namespace quorvane::desktop
