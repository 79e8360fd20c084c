#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "hosts/desktop/AppleDoubleFile.h"
#include "hosts/desktop/FileManager.h"
#include "hosts/resources/AliasRecord.h"
#include "hosts/resources/UTCDates.h"

namespace quorvane::desktop {
namespace {

FSCatalogInfo infoOf(const std::string& path, const FileState& state, std::uint32_t whichInfo) {
  FSCatalogInfo info;
  if (state.isDirectory) info.nodeFlags = kFSNodeIsDirectoryMask;
  info.contentModDate = resources::utcDateTimeOf(state.modificationNanoseconds);
  if (state.isDirectory || (whichInfo & kFSCatInfoFinderInfo) == 0) return info;
  const auto around = readAppleDoubleFile(path);
  const auto finder = around ? resources::finderInfoOf(*around) : resources::FinderInfo{};
  info.fileType = finder.fileType;
  info.fileCreator = finder.fileCreator;
  return info;
}

}  // namespace

OSStatus FileManager::FSFindFolder(std::int16_t /*domain*/, FourCharCode folderType, FSRef& ref) {
  const auto folder = folders_.find(folderType);
  if (folder == folders_.end()) return fnfErr;
  const auto found = nodes_.refOf(folder->second);
  if (!found) return fnfErr;
  ref = *found;
  return noErr;
}

bool FileManager::FSIsFSRefValid(const FSRef& ref) { return nodes_.find(ref).has_value(); }

OSStatus FileManager::FSOpenIterator(const FSRef& container, FSIterator& iterator) {
  const auto item = nodes_.find(container);
  if (!item) return fnfErr;
  Folder folder(opendir(item->path.c_str()));
  if (folder == nullptr) return fnfErr;
  iterator = ++lastIterator_;
  iterations_[iterator] = {std::move(folder), container, item->path};
  return noErr;
}

OSStatus FileManager::FSGetCatalogInfoBulk(FSIterator iterator, std::uint32_t whichInfo,
                                           std::span<FSCatalogItem> items, std::size_t& count) {
  const auto iteration = iterations_.find(iterator);
  if (iteration == iterations_.end()) return paramErr;
  std::size_t done = 0;
  OSStatus status = noErr;
  while (status == noErr && done < items.size()) {
    errno = 0;
    const dirent* const entry = readdir(iteration->second.folder.get());
    if (entry == nullptr) status = errno == 0 ? errFSNoMoreItems : ioErr;
    if (entry != nullptr && fill(items[done], iteration->second, entry->d_name, whichInfo)) ++done;
  }
  count = done;
  return status;
}

/// False for what is no item: the folder itself, an item's resources, a link to nothing, a name
/// that is no text.
bool FileManager::fill(FSCatalogItem& item, const Iteration& iteration, const std::string& name,
                       std::uint32_t whichInfo) {
  if (name == "." || name == ".." || resources::isAppleDoubleName(name)) return false;
  const auto state = stateOfFile(dirfd(iteration.folder.get()), name.c_str());
  const auto units = unitsOf(name);
  if (!state || !units) return false;
  item = {infoOf(iteration.path + "/" + name, *state, whichInfo),
          nodes_.refOf(iteration.container, name, *state), *units};
  return true;
}

std::optional<std::u16string> FileManager::unitsOf(std::string_view name) {
  return encoding_.initWithData({reinterpret_cast<const std::uint8_t*>(name.data()), name.size()},
                                NSStringEncoding::UTF8);
}

OSStatus FileManager::FSCloseIterator(FSIterator iterator) {
  return iterations_.erase(iterator) == 1 ? noErr : paramErr;
}

OSStatus FileManager::FSGetCatalogInfo(const FSRef& ref, std::uint32_t whichInfo,
                                       FSCatalogInfo* info, std::u16string* name, FSRef* parent) {
  const auto item = nodes_.find(ref);
  if (!item) return fnfErr;
  if (info != nullptr) *info = infoOf(item->path, item->state, whichInfo);
  if (name == nullptr && parent == nullptr) return noErr;
  const std::filesystem::path path = item->path;
  if (name != nullptr) *name = unitsOf(path.filename().native()).value_or(u"");
  if (parent != nullptr) *parent = nodes_.refOf(path.parent_path()).value_or(FSRef{});
  return noErr;
}

OSStatus FileManager::FSSetCatalogInfo(const FSRef& ref, std::uint32_t whichInfo,
                                       const FSCatalogInfo& info) {
  const auto item = nodes_.find(ref);
  if (!item) return fnfErr;
  if ((whichInfo & kFSCatInfoContentMod) == 0) return noErr;
  const std::int64_t date = resources::nanosecondsOf(info.contentModDate);
  const timespec times[2] = {{0, UTIME_OMIT},
                             {date / resources::kNanosecondsPerSecond,
                              static_cast<long>(date % resources::kNanosecondsPerSecond)}};
  return utimensat(AT_FDCWD, item->path.c_str(), times, 0) == 0 ? noErr : wrPermErr;
}

OSStatus FileManager::FSRefMakePath(const FSRef& ref, std::string& path) {
  const auto item = nodes_.find(ref);
  if (!item) return fnfErr;
  path = item->path;
  return noErr;
}

bool FileManager::CFURLGetFSRef(const std::string& path, FSRef& ref) {
  const auto found = nodes_.refOf(path);
  if (found) ref = *found;
  return found.has_value();
}

OSStatus FileManager::FSResolveAlias(const FSRef* fromFile, std::span<const std::uint8_t> alias,
                                     FSRef& target) {
  const auto leadsTo = resources::pathOfAlias(alias);
  if (!leadsTo) return paramErr;
  const auto base = fromFile == nullptr ? std::nullopt : nodes_.find(*fromFile);
  std::filesystem::path path = *leadsTo;
  if (path.is_relative() && !base) return fnfErr;
  if (path.is_relative()) path = base->path / path;
  return CFURLGetFSRef(path, target) ? noErr : fnfErr;
}

}  // namespace quorvane::desktop
