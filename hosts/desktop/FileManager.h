#pragma once
// Files of the disk. Only plain files are opened, so that nothing blocks that bears a file's name.

#include <dirent.h>

#include <filesystem>
#include <map>
#include <memory>

#include "hosts/desktop/FileNodes.h"
#include "hosts/icu/IcuTextEncoding.h"
#include "platform/FileManager.h"
#include "platform/LogSink.h"

namespace quorvane::desktop {

/// Where an FSFindFolder of each type leads.
using SpecialFolders = std::map<FourCharCode, std::filesystem::path>;

class FileManager final : public quorvane::FileManager {
 public:
  /// A larger file can't be read.
  static constexpr std::uint64_t kLargestFile = std::uint64_t{1} << 28;

  FileManager(std::filesystem::path home, std::filesystem::path caches, SpecialFolders folders,
              quorvane::LogSink& log);

  std::string NSHomeDirectory() override { return home_.string(); }
  std::string cachesDirectory() override { return caches_.string(); }
  std::optional<FileAttributes> attributesOfItemAtPath(const std::string& path) override;
  std::unique_ptr<FileData> dataWithContentsOfFile(const std::string& path) override;
  std::unique_ptr<FileData> dataWithContentsOfMappedFile(const std::string& path) override;
  std::optional<std::u16string> stringWithContentsOfFile(const std::string& path) override;
  /// A failure is logged.
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
  bool CFURLGetFSRef(const std::string& path, FSRef& ref) override;
  OSStatus FSResolveAlias(const FSRef* fromFile, std::span<const std::uint8_t> alias,
                          FSRef& target) override;

 private:
  struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
  };
  using Folder = std::unique_ptr<DIR, CloseFolder>;
  struct Iteration {
    Folder folder;
    FSRef container;
    std::string path;
  };

  bool fill(FSCatalogItem& item, const Iteration& iteration, const std::string& name,
            std::uint32_t whichInfo);
  std::optional<std::u16string> unitsOf(std::string_view name);

  std::filesystem::path home_;
  std::filesystem::path caches_;
  SpecialFolders folders_;
  quorvane::LogSink& log_;
  FileNodes nodes_;
  std::map<FSIterator, Iteration> iterations_;
  FSIterator lastIterator_ = 0;
  IcuTextEncoding encoding_;
};

}  // namespace quorvane::desktop
