#pragma once
// Files: NSFileManager, the reading and writing of whole files, and the File Manager's references,
// folders and catalogue. Paths are UTF-8.

#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "platform/MacTypes.h"
#include "platform/Units.h"

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

inline constexpr OSStatus errFSNoMoreItems = -1417;

inline constexpr std::int16_t kUserDomain = -32763;
inline constexpr std::int16_t kOnAppropriateDisk = -32767;
inline constexpr FourCharCode kApplicationSupportFolderType = "asup"_4cc;
inline constexpr FourCharCode kPreferencesFolderType = "pref"_4cc;
inline constexpr FourCharCode kApplicationsFolderType = "apps"_4cc;

inline constexpr std::uint32_t kFSCatInfoNodeFlags = 2;
inline constexpr std::uint32_t kFSCatInfoContentMod = 64;
inline constexpr std::uint32_t kFSCatInfoFinderInfo = 2048;
inline constexpr std::uint16_t kFSNodeIsDirectoryMask = 16;

/// A file or a folder, by nothing that a path says: it stays valid while the item lives, under
/// whatever name in its folder, and a folder above may change its name too. Only the host that made
/// it understands it; the same item has the same bytes.
struct FSRef {
  std::array<std::uint8_t, 80> hidden{};
  bool operator==(const FSRef&) const = default;
};

/// Since the beginning of 1904, UTC.
struct UTCDateTime {
  std::uint16_t highSeconds = 0;
  std::uint32_t lowSeconds = 0;
  std::uint16_t fraction = 0;  ///< of a second, in 1/65536
  bool operator==(const UTCDateTime&) const = default;
};

/// `time` as Clock::CFAbsoluteTimeGetCurrent gives it.
inline OSStatus UCConvertCFAbsoluteTimeToUTCDateTime(Seconds time, UTCDateTime& date) {
  constexpr double kSecondsTo2001 = 3'061'152'000;  // from the beginning of 1904
  const double since1904 = time.count() + kSecondsTo2001;
  const double whole = std::floor(since1904);
  const auto seconds = static_cast<std::uint64_t>(whole);
  date = {.highSeconds = static_cast<std::uint16_t>(seconds >> 32),
          .lowSeconds = static_cast<std::uint32_t>(seconds),
          .fraction = static_cast<std::uint16_t>((since1904 - whole) * 65536)};
  return noErr;
}

/// What a catalogue says of an item, as far as it was asked for.
struct FSCatalogInfo {
  std::uint16_t nodeFlags = 0;
  UTCDateTime contentModDate;
  FourCharCode fileType = 0;  ///< Finder info; 0 where there is none
  FourCharCode fileCreator = 0;
};

struct FSCatalogItem {
  FSCatalogInfo info;
  FSRef ref;
  std::u16string name;
};

/// An enumeration of a folder.
using FSIterator = std::uint64_t;

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

  // Every one of these that gives a status leaves what it would fill on failure.

  /// Doesn't make the folder.
  virtual OSStatus FSFindFolder(std::int16_t domain, FourCharCode folderType, FSRef& ref) = 0;
  virtual bool FSIsFSRefValid(const FSRef& ref) = 0;
  /// The items of the folder itself, in no order.
  virtual OSStatus FSOpenIterator(const FSRef& container, FSIterator& iterator) = 0;
  /// The next ones, as many as fit; `count` says how many. errFSNoMoreItems where the folder has no
  /// more, and then there may be some all the same.
  virtual OSStatus FSGetCatalogInfoBulk(FSIterator iterator, std::uint32_t whichInfo,
                                        std::span<FSCatalogItem> items, std::size_t& count) = 0;
  virtual OSStatus FSCloseIterator(FSIterator iterator) = 0;
  /// Each of `info`, `name` and `parent` may be null.
  virtual OSStatus FSGetCatalogInfo(const FSRef& ref, std::uint32_t whichInfo, FSCatalogInfo* info,
                                    std::u16string* name, FSRef* parent) = 0;
  /// Of an item only the content's modification date can be set; the rest of `whichInfo` is passed
  /// over.
  virtual OSStatus FSSetCatalogInfo(const FSRef& ref, std::uint32_t whichInfo,
                                    const FSCatalogInfo& info) = 0;
  virtual OSStatus FSRefMakePath(const FSRef& ref, std::string& path) = 0;
  /// CFURLGetFSRef: of what lies at the path. False where there is nothing.
  virtual bool CFURLGetFSRef(const std::string& path, FSRef& ref) = 0;
  /// What an alias record leads to. `fromFile` may be null: nothing that it could be relative to.
  virtual OSStatus FSResolveAlias(const FSRef* fromFile, std::span<const std::uint8_t> alias,
                                  FSRef& target) = 0;
};

}  // namespace quorvane
