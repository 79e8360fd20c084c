#include <algorithm>
#include <cstring>

#include "hosts/memory/MemoryFiles.h"
#include "hosts/resources/AliasRecord.h"
#include "hosts/resources/UTCDates.h"
#include "src/base/HostWords.h"

namespace quorvane::memory {
namespace {

std::string nameOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

}  // namespace

/// The number of the file, which a new one of that name doesn't get.
MemoryFileManager::Files::iterator MemoryFileManager::find(const FSRef& ref) {
  const auto number = hostNumber<std::uint64_t>(ref.hidden, 0);
  return std::ranges::find_if(
      files_, [&](const auto& each) { return each.second.attributes.systemFileNumber == number; });
}

FSRef MemoryFileManager::refOf(const std::string& path) const {
  FSRef ref;
  const std::uint64_t number = files_.at(path).attributes.systemFileNumber;
  std::memcpy(ref.hidden.data(), &number, sizeof number);
  return ref;
}

std::u16string MemoryFileManager::unitsOf(std::string_view name) {
  const resources::ByteView bytes(reinterpret_cast<const std::uint8_t*>(name.data()), name.size());
  return encoding_.initWithData(bytes, NSStringEncoding::UTF8).value_or(u"");
}

FSCatalogInfo MemoryFileManager::infoOf(const Files::value_type& file,
                                        std::uint32_t whichInfo) const {
  FSCatalogInfo info;
  const auto& [path, item] = file;
  if (item.content == nullptr) info.nodeFlags = kFSNodeIsDirectoryMask;
  info.contentModDate = resources::utcDateTimeOf(item.attributes.modificationNanoseconds);
  const auto around = files_.find(resources::appleDoublePath(path));
  if ((whichInfo & kFSCatInfoFinderInfo) == 0 || around == files_.end()) return info;
  const auto finder = resources::finderInfoOf(
      resources::ByteView(*around->second.content).first(around->second.attributes.size));
  info.fileType = finder.fileType;
  info.fileCreator = finder.fileCreator;
  return info;
}

OSStatus MemoryFileManager::FSFindFolder(std::int16_t /*domain*/, FourCharCode folderType,
                                         FSRef& ref) {
  const auto path = folderType == kApplicationSupportFolderType ? applicationSupportFolder
                    : folderType == kPreferencesFolderType      ? preferencesFolder
                    : folderType == kApplicationsFolderType     ? applicationsFolder
                                                                : std::string();
  if (!has(path)) return fnfErr;
  ref = refOf(path);
  return noErr;
}

bool MemoryFileManager::FSIsFSRefValid(const FSRef& ref) { return find(ref) != files_.end(); }

OSStatus MemoryFileManager::FSOpenIterator(const FSRef& container, FSIterator& iterator) {
  const auto folder = find(container);
  if (folder == files_.end() || folder->second.content != nullptr) return fnfErr;
  Iteration iteration;
  const std::string inside = folder->first + "/";
  for (const auto& [path, file] : files_) {
    const bool isItem = path.starts_with(inside) && path.find('/', inside.size()) == path.npos;
    if (isItem && !resources::isAppleDoubleName(nameOf(path))) iteration.paths.push_back(path);
  }
  iterator = ++lastIterator_;
  iterations_[iterator] = std::move(iteration);
  return noErr;
}

OSStatus MemoryFileManager::FSGetCatalogInfoBulk(FSIterator iterator, std::uint32_t whichInfo,
                                                 std::span<FSCatalogItem> items,
                                                 std::size_t& count) {
  const auto iteration = iterations_.find(iterator);
  if (iteration == iterations_.end()) return paramErr;
  auto& [paths, next] = iteration->second;
  for (count = 0; count < items.size() && next < paths.size(); ++next) {
    const auto file = files_.find(paths[next]);
    if (file == files_.end()) continue;
    items[count++] = {infoOf(*file, whichInfo), refOf(file->first), unitsOf(nameOf(file->first))};
  }
  return next == paths.size() ? errFSNoMoreItems : noErr;
}

OSStatus MemoryFileManager::FSCloseIterator(FSIterator iterator) {
  return iterations_.erase(iterator) == 1 ? noErr : paramErr;
}

OSStatus MemoryFileManager::FSGetCatalogInfo(const FSRef& ref, std::uint32_t whichInfo,
                                             FSCatalogInfo* info, std::u16string* name,
                                             FSRef* parent) {
  const auto file = find(ref);
  if (file == files_.end()) return fnfErr;
  const std::string& path = file->first;
  if (info != nullptr) *info = infoOf(*file, whichInfo);
  if (name != nullptr) *name = unitsOf(nameOf(path));
  const std::string folder = path.substr(0, path.rfind('/'));
  if (parent != nullptr) *parent = has(folder) ? refOf(folder) : FSRef{};
  return noErr;
}

OSStatus MemoryFileManager::FSSetCatalogInfo(const FSRef& ref, std::uint32_t whichInfo,
                                             const FSCatalogInfo& info) {
  const auto file = find(ref);
  if (file == files_.end()) return fnfErr;
  if ((whichInfo & kFSCatInfoContentMod) != 0) {
    file->second.attributes.modificationNanoseconds = resources::nanosecondsOf(info.contentModDate);
  }
  return noErr;
}

OSStatus MemoryFileManager::FSRefMakePath(const FSRef& ref, std::string& path) {
  const auto file = find(ref);
  if (file == files_.end()) return fnfErr;
  path = file->first;
  return noErr;
}

bool MemoryFileManager::CFURLGetFSRef(const std::string& path, FSRef& ref) {
  if (!has(path)) return false;
  ref = refOf(path);
  return true;
}

/// A path without a slash before it lies in the folder `fromFile`.
OSStatus MemoryFileManager::FSResolveAlias(const FSRef* fromFile,
                                           std::span<const std::uint8_t> alias, FSRef& target) {
  auto path = resources::pathOfAlias(alias);
  if (!path) return paramErr;
  if (!path->starts_with('/')) {
    const auto base = fromFile == nullptr ? files_.end() : find(*fromFile);
    if (base == files_.end()) return fnfErr;
    path->insert(0, base->first + "/");
  }
  return CFURLGetFSRef(*path, target) ? noErr : fnfErr;
}

std::optional<resources::Bytes> MemoryFileManager::read(const FSRef& ref) {
  const auto file = find(ref);
  if (file == files_.end() || (readFails && readFails(file->first))) return {};
  const auto around = dataWithContentsOfFile(resources::appleDoublePath(file->first));
  if (around == nullptr) return resources::Bytes{};
  return resources::Bytes(around->bytes().begin(), around->bytes().end());
}

MemoryFileManager::Lock MemoryFileManager::lock(const FSRef& ref) {
  if (find(ref) == files_.end()) return nullptr;
  return std::make_shared<int>();
}

bool MemoryFileManager::replace(const FSRef& ref, resources::ByteView content) {
  const auto file = find(ref);
  return file != files_.end() &&
         writeToFile(resources::appleDoublePath(file->first), {&content, 1});
}

void MemoryFileManager::complain(const FSRef& ref, std::string_view reason) {
  std::string path;
  FSRefMakePath(ref, path);
  complaints.push_back(nameOf(path).append(": ").append(reason));
}

}  // namespace quorvane::memory
