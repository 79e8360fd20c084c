#include "src/menu/FileSubmenu.h"

#include <algorithm>
#include <utility>

#include "src/base/Log.h"
#include "src/bridge/NSFileManager_search.h"
#include "src/bridge/ResFile.h"
#include "src/menu/InputMenu.h"

namespace quorvane {
namespace {

/// Behind them come the numbers of another submenu.
constexpr std::size_t kMostFiles = 999;

constexpr std::uint32_t kDateInfo = kFSCatInfoNodeFlags | kFSCatInfoContentMod;

void addFile(Instance& instance, const FileSubmenu& submenu, std::uint32_t number,
             const FSRef& file) {
  if (const auto title = submenu.titleOf(instance, file)) {
    AddMenuItem_walkMenu(instance, submenu.head, *title, number);
  }
  EnableNSMenuItemTag(instance, number, true);
  NS_CheckMark_MenuItem_FromTag(instance, number, submenu.isOn(instance, file));
}

UTCDateTime aSecondFromNow(Instance& instance) {
  UTCDateTime date;
  UCConvertCFAbsoluteTimeToUTCDateTime(instance.platform().clock.CFAbsoluteTimeGetCurrent(), date);
  ++date.lowSeconds;
  return date;
}

}  // namespace

bool findQuorvaneFolder(Instance& instance, FSRef& folder) {
  FileManager& files = instance.platform().fileManager;
  return files.FSFindFolder(kUserDomain, kApplicationSupportFolderType, folder) == noErr &&
         Search_First(instance, kSearchQuorvaneFolder, folder) != 0;
}

Handle filesOf(Instance& instance, std::uint32_t kind, const FSRef& folder) {
  if (!instance.platform().fileManager.FSIsFSRefValid(folder)) return nullptr;
  do_Search_ItemForFSRef(instance, kind, folder, false);
  Handle files = Take_iterate_Handle(instance);
  return files != nullptr ? files : NewHandle(0);
}

bool showFiles(Instance& instance, const FileSubmenu& submenu, const Handle& files) {
  RemoveAll_SubMenu_Items(instance, submenu.head);
  const std::size_t count = countOfList(files);
  if (count > kMostFiles) Log(instance, "Files without an item: ", count - kMostFiles);
  std::uint32_t number = submenu.firstItem;
  for (std::size_t i = 0; i < std::min(count, kMostFiles); ++i) {
    addFile(instance, submenu, number++, itemOfList(files, i));
  }
  return SubMenu_Count(instance, submenu.head) != 0;
}

std::optional<std::string> nameOfFile(Instance& instance, const FSRef& file) {
  FileName name{};
  FSGetFileDirName_ToCString(instance, file, name);
  std::string text(reinterpret_cast<const char*>(name.data()));
  if (text.empty()) return std::nullopt;
  return text;
}

std::optional<std::u16string> titleOfName(Instance& instance, std::string_view name) {
  return instance.platform().textEncoding.initWithData(
      {reinterpret_cast<const std::uint8_t*>(name.data()), name.size()}, NSStringEncoding::UTF8);
}

bool switchOfFile(Instance& instance, const FSRef& file, bool otherwise) {
  const CurrentResFile open(
      instance, [&file](Instance& in) { return Do_FS_OpenResFile(in, file, fsRdPerm); });
  if (!open) return otherwise;
  const Handle content =
      instance.platform().resourceManager.Get1Resource(kFileSwitch, kFileSwitchID);
  return GetHandleSize(content) == 0 ? otherwise : content->content[0] != 0;
}

std::int32_t isDateUnchanged(Instance& instance, const FSRef& folder, UTCDateTime& seen) {
  FSCatalogInfo info;
  const OSStatus status =
      instance.platform().fileManager.FSGetCatalogInfo(folder, kDateInfo, &info, nullptr, nullptr);
  if (status != noErr || (info.nodeFlags & kFSNodeIsDirectoryMask) == 0) return 0;
  return std::exchange(seen, info.contentModDate) == info.contentModDate ? 1 : 0;
}

void moveDateOfFolder(Instance& instance, const FSRef& file, const FSRef& folder) {
  FileManager& files = instance.platform().fileManager;
  FSCatalogInfo info;
  if (files.FSGetCatalogInfo(file, kDateInfo, &info, nullptr, nullptr) != noErr) return;
  info.contentModDate = aSecondFromNow(instance);
  files.FSSetCatalogInfo(folder, kDateInfo, info);
}

}  // namespace quorvane
