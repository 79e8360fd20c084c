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
#include "hosts/resources/AppleDouble.h"
#include "hosts/resources/ForkStore.h"
#include "hosts/resources/ResourceFork.h"
#include "platform/Bundle.h"
#include "platform/FileManager.h"

namespace quorvane::memory {

/// Type, creator and resources lie in files `._name`, as on a disk of another system.
class MemoryFileManager : public FileManager, public resources::ForkStore {
 public:
  MemoryFileManager();

  std::string NSHomeDirectory() override { return homeDirectory; }
  std::string cachesDirectory() override { return cacheDirectory; }
  std::optional<FileAttributes> attributesOfItemAtPath(const std::string& path) override;
  std::unique_ptr<FileData> dataWithContentsOfFile(const std::string& path) override;
  std::unique_ptr<FileData> dataWithContentsOfMappedFile(const std::string& path) override;
  std::optional<std::u16string> stringWithContentsOfFile(const std::string& path) override;
  bool writeToFile(const std::string& path,
                   std::span<const std::span<const std::uint8_t>> parts) override;

  OSStatus FSFindFolder(std::int16_t domain, FourCharCode folderType, FSRef& ref) override;
  bool FSIsFSRefValid(const FSRef& ref) override;
  OSStatus FSOpenIterator(const FSRef& container, FSIterator& iterator) override;
  OSStatus FSGetCatalogInfoBulk(FSIterator iterator, std::uint32_t whichInfo,
                                std::span<FSCatalogItem> items, std::size_t& count) override;
  OSStatus FSCloseIterator(FSIterator iterator) override;
  OSStatus FSGetCatalogInfo(const FSRef& ref, std::uint32_t whichInfo, FSCatalogInfo* info,
                            std::u16string* name, FSRef* parent) override;
  OSStatus FSSetCatalogInfo(const FSRef& ref, std::uint32_t whichInfo,
                            const FSCatalogInfo& info) override;
  OSStatus FSRefMakePath(const FSRef& ref, std::string& path) override;
  bool CFURLGetFSRef(const std::string& /*path*/, FSRef& /*ref*/) override { return false; }
  OSStatus FSResolveAlias(const FSRef* /*fromFile*/, std::span<const std::uint8_t> /*alias*/,
                          FSRef& /*target*/) override {
    return fnfErr;
  }

  std::optional<resources::Bytes> read(const FSRef& ref) override;
  Lock lock(const FSRef& ref) override;
  bool replace(const FSRef& ref, resources::ByteView content) override;
  void complain(const FSRef& ref, std::string_view reason) override;

  // The script's side.
  /// As if written by another program: a new file each time, with a date of its own.
  void put(const std::string& path, std::string_view content);
  /// The file's `._name`.
  void putResources(const std::string& path, resources::FinderInfo info,
                    const resources::ResourceFork& fork);
  /// The same, of what it holds by now; made where there is none, and made anew where it can't be
  /// read.
  void changeResources(
      const std::string& path,
      const std::function<void(resources::FinderInfo&, resources::ResourceFork&)>& change);
  /// Of a file or a folder, since the beginning of 1970.
  void setModificationDate(const std::string& path, std::int64_t nanoseconds) {
    files_.at(path).attributes.modificationNanoseconds = nanoseconds;
  }
  [[nodiscard]] std::int64_t modificationDate(const std::string& path) const {
    return files_.at(path).attributes.modificationNanoseconds;
  }
  /// And the folders above it.
  void makeFolder(const std::string& path);
  /// A file with its `._name`, or a folder with all that is in it.
  void remove(const std::string& path);
  void rename(const std::string& from, const std::string& to);
  [[nodiscard]] bool has(const std::string& path) const { return files_.contains(path); }
  /// The same size, date and inode, another content.
  void damage(const std::string& path, std::size_t at, std::uint8_t byte);

  std::string homeDirectory = "/home/user";
  std::string cacheDirectory = "/caches";
  std::string applicationSupportFolder = "/application support";
  std::string preferencesFolder = "/preferences";
  std::string applicationsFolder = "/applications";
  bool writeFails = false;
  /// The file is there and can't be read.
  std::function<bool(const std::string& path)> readFails;
  std::vector<std::string> complaints;  ///< damaged resource files: name, colon, reason

 private:
  using Content = std::shared_ptr<std::vector<std::uint8_t>>;
  struct File {
    Content content;  ///< null: a folder
    FileAttributes attributes;
  };
  using Files = std::map<std::string, File>;
  struct Iteration {
    std::vector<std::string> paths;
    std::size_t next = 0;
  };

  [[nodiscard]] FileAttributes newAttributes(std::size_t size);
  void touchFolderOf(const std::string& path);
  [[nodiscard]] Files::iterator find(const FSRef& ref);
  [[nodiscard]] FSRef refOf(const std::string& path) const;
  std::u16string unitsOf(std::string_view name);
  [[nodiscard]] FSCatalogInfo infoOf(const Files::value_type& file, std::uint32_t whichInfo) const;

  Files files_;
  std::map<FSIterator, Iteration> iterations_;
  FSIterator lastIterator_ = 0;
  std::uint64_t changes_ = 0;
  IcuTextEncoding encoding_;
};

/// Resources lie in `/bundle/` of the files. There are a small word list and nothing else at first.
class MemoryBundle : public Bundle {
 public:
  explicit MemoryBundle(MemoryFileManager& files);

  std::optional<std::string> pathForResource(std::string_view name, std::string_view type) override;
  std::optional<std::string> pathForResource(std::string_view /*name*/, std::string_view /*type*/,
                                             std::string_view /*subdirectory*/) override {
    return {};
  }
  std::optional<std::string> CFBundleGetBundleWithIdentifier(
      std::string_view /*identifier*/) override {
    return {};
  }
  std::optional<std::string> CFBundleCopySharedSupportURL(
      std::string_view /*identifier*/) override {
    return {};
  }
  std::optional<std::string> CFBundleCopySharedSupportURL() override { return {}; }

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
