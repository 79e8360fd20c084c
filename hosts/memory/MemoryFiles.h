#pragma once
// Files and the bundle in memory. What is asked of them is no platform call in the journal: a test
// that makes the world change before a certain call means one that other processes can see.

#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/icu/IcuTextEncoding.h"
#include "platform/Bundle.h"
#include "platform/FileManager.h"

namespace quorvane::memory {

class MemoryFileManager : public FileManager {
 public:
  std::string NSHomeDirectory() override { return homeDirectory; }
  std::string cachesDirectory() override { return cacheDirectory; }
  std::optional<FileAttributes> attributesOfItemAtPath(const std::string& path) override;
  std::unique_ptr<FileData> dataWithContentsOfFile(const std::string& path) override;
  std::unique_ptr<FileData> dataWithContentsOfMappedFile(const std::string& path) override;
  std::optional<std::u16string> stringWithContentsOfFile(const std::string& path) override;
  bool writeToFile(const std::string& path,
                   std::span<const std::span<const std::uint8_t>> parts) override;

  // The script's side.
  /// As if written by another program: a new file each time, with a date of its own.
  void put(const std::string& path, std::string_view content);
  void remove(const std::string& path) { files_.erase(path); }
  [[nodiscard]] bool has(const std::string& path) const { return files_.contains(path); }
  /// The same size, date and inode, another content.
  void damage(const std::string& path, std::size_t at, std::uint8_t byte);

  std::string homeDirectory = "/home/user";
  std::string cacheDirectory = "/caches";
  bool writeFails = false;
  /// The file is there and can't be read.
  std::function<bool(const std::string& path)> readFails;

 private:
  using Content = std::shared_ptr<std::vector<std::uint8_t>>;
  struct File {
    Content content;
    FileAttributes attributes;
  };

  std::map<std::string, File> files_;
  std::uint64_t changes_ = 0;
  IcuTextEncoding encoding_;
};

/// Resources lie in `/bundle/` of the files. There are a small word list and nothing else at first.
class MemoryBundle : public Bundle {
 public:
  explicit MemoryBundle(MemoryFileManager& files);

  std::optional<std::string> pathForResource(std::string_view name, std::string_view type) override;

  // The script's side.
  void put(std::string_view fileName, std::string_view content);
  void remove(std::string_view fileName);
  /// Puts a word list of these, in the format that the input method loads.
  void setWordList(std::span<const std::string_view> words);

  static constexpr std::string_view kWordList = "google_227800_words.bin";

 private:
  MemoryFileManager& files_;
};

}  // namespace quorvane::memory
