#pragma once
// Files: NSFileManager, and the reading and writing of whole files. Paths are UTF-8.

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace quorvane {

/// Tells one state of a file from every other.
struct FileAttributes {
  std::uint64_t size = 0;  ///< bytes
  std::int64_t modificationNanoseconds = 0;
  std::uint64_t systemFileNumber = 0;  ///< inode
  bool operator==(const FileAttributes&) const = default;
};

/// Bytes of a file, unchanging for as long as this lives.
class FileData {
 public:
  /// So many bytes behind those of a file that was read, not mapped, may be read as well. A parser
  /// that looks ahead needs no copy then.
  static constexpr std::size_t kReadableBehind = 64;

  virtual ~FileData() = default;
  [[nodiscard]] virtual std::span<const std::uint8_t> bytes() const = 0;
};

class FileManager {
 public:
  virtual ~FileManager() = default;

  virtual std::string NSHomeDirectory() = 0;
  /// A folder for what can be made again at any time. Need not exist yet.
  virtual std::string cachesDirectory() = 0;
  /// None where there is no such file or it isn't a plain one.
  virtual std::optional<FileAttributes> attributesOfItemAtPath(const std::string& path) = 0;
  /// The whole file, read; null where it can't be.
  virtual std::unique_ptr<FileData> dataWithContentsOfFile(const std::string& path) = 0;
  /// The same, mapped: nothing is read before it is touched. For files that are replaced as a whole
  /// and never written in place.
  virtual std::unique_ptr<FileData> dataWithContentsOfMappedFile(const std::string& path) = 0;
  /// None where the file can't be read or isn't valid UTF-8.
  virtual std::optional<std::u16string> stringWithContentsOfFile(const std::string& path) = 0;
  /// Replaces the file as a whole, by all parts one after the other, or leaves it as it was: false.
  /// Makes the folders on the way. Only our user may read it. A power cut may leave a part.
  virtual bool writeToFile(const std::string& path,
                           std::span<const std::span<const std::uint8_t>> parts) = 0;
};

}  // namespace quorvane
