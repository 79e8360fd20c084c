#include "src/bridge/NSFileManager_search.h"

#include <algorithm>
#include <array>

#include "src/base/Log.h"

namespace quorvane {
namespace {

constexpr std::size_t kBatch = 256;
constexpr std::uint32_t kWanted = kFSCatInfoNodeFlags | kFSCatInfoFinderInfo;

struct FolderName {
  std::uint32_t kind;
  std::u16string_view name;
};
constexpr std::array<FolderName, 9> kFolders{{
    {kSearchQuorvaneFolder, u"Quorvane"},
    {kSearchDictionariesFolder, u"Quorvane Dictionaries"},
    {kSearchSpellingFolder, u"Spelling"},
    {kSearchAutoTypeFolder, u"AutoType"},
    {kSearchApplication, u"Quorvane.app"},
    {kSearchApplicationFolder, u"Quorvane ARC7 X"},
    {kSearchApplicationFolder, u"Quorvane_ARC7_X"},
    {kSearchApplicationFolder, u"Quorvane-ARC7-X"},
    {kSearchApplicationsFolder, u"Applications"},
}};

/// Files are known by type and creator, or by their name.
struct FileMark {
  std::uint32_t kind;
  FourCharCode type, creator;
  std::u16string_view name;
};
constexpr std::array<FileMark, 12> kFiles{{
    {kSearchSpellingFiles, "QDXC"_4cc, "QVKT"_4cc, {}},
    {kSearchSpellingFiles, "QDXD"_4cc, "QVKT"_4cc, {}},
    {kSearchSpellingFiles, "QPDT"_4cc, "QVKT"_4cc, {}},
    {kSearchSpellingFiles, "QPDC"_4cc, "QVKT"_4cc, {}},
    {kSearchSpellingFiles, "QDXX"_4cc, "QVKT"_4cc, {}},
    {kSearchSpellingFiles, "QPD2"_4cc, "QVKT"_4cc, {}},
    {kSearchParameterFile, "PREF"_4cc, "QVKT"_4cc, {}},
    {kSearchAutoTypeFiles, "TEXT"_4cc, "QVKE"_4cc, {}},
    {kSearchAutoTypeFiles, "TEXT"_4cc, "\?\?\?\?"_4cc, {}},
    {kSearchAutoTypeFiles, "TEXT"_4cc, 0, {}},
    {kSearchQuorvaneFile, 0, 0, u"Quorvane"},
    {kSearchPreferencesFile, 0, 0, u"Quorvane ARC7 Preferences"},
}};

class OpenIterator {
 public:
  OpenIterator(FileManager& files, const FSRef& folder)
      : files_(files), open_(files.FSOpenIterator(folder, iterator_) == noErr) {}
  ~OpenIterator() {
    if (open_) files_.FSCloseIterator(iterator_);
  }
  OpenIterator(const OpenIterator&) = delete;
  OpenIterator& operator=(const OpenIterator&) = delete;

  explicit operator bool() const { return open_; }
  OSStatus next(std::span<FSCatalogItem> items, std::size_t& count) {
    return files_.FSGetCatalogInfoBulk(iterator_, kWanted, items, count);
  }

 private:
  FileManager& files_;
  FSIterator iterator_ = 0;
  bool open_;
};

/// A folder that matches ends its batch: of several names that a folder may have, one batch gives
/// the first.
void searchBatch(Instance& instance, std::uint32_t kind, std::span<const FSCatalogItem> items,
                 bool recurse) {
  for (const FSCatalogItem& item : items) {
    if ((item.info.nodeFlags & kFSNodeIsDirectoryMask) == 0) {
      Append_Found_FSRef(instance, kind, item.ref, item.name, item.info);
    } else if (Check_Directory_FSRef(instance, kind, item.ref, item.name) != 0) {
      return;
    } else if (kind != kSearchSpellingFiles && recurse) {
      Search_ItemForFSRef(instance, kind, item.ref, recurse);
    }
  }
}

}  // namespace

void do_Search_ItemForFSRef(Instance& instance, std::uint32_t kind, const FSRef& folder,
                            bool recurse) {
  Dispose_iterate_Handle(instance);
  Search_ItemForFSRef(instance, kind, folder, recurse);
  Reset_iterate_Handle(instance);
}

void Search_ItemForFSRef(Instance& instance, std::uint32_t kind, const FSRef& folder,
                         bool recurse) {
  OpenIterator iterator(instance.platform().fileManager, folder);
  if (!iterator) return;
  std::array<FSCatalogItem, kBatch> items;
  OSStatus status = noErr;
  while (status == noErr) {
    std::size_t count = 0;
    status = iterator.next(items, count);
    if (status != noErr && status != errFSNoMoreItems) return;
    searchBatch(instance, kind, std::span(items).first(count), recurse);
  }
}

std::int32_t Check_Directory_FSRef(Instance& instance, std::uint32_t kind, const FSRef& ref,
                                   std::u16string_view name) {
  const bool matches = std::ranges::any_of(
      kFolders, [&](const FolderName& row) { return row.kind == kind && row.name == name; });
  if (matches) do_Set_iterate_Handle(instance, ref);
  return matches ? 1 : 0;
}

std::int32_t Check_File_Type(Instance& instance, std::uint32_t kind, std::u16string_view name,
                             const FSCatalogInfo& info) {
  const bool matches = std::ranges::any_of(kFiles, [&](const FileMark& row) {
    if (row.kind != kind) return false;
    if (!row.name.empty()) return row.name == name;
    return row.type == info.fileType && row.creator == info.fileCreator;
  });
  if (matches && kind == kSearchParameterFile) Set_iterate_Handle(instance);
  return matches ? 1 : 0;
}

void Append_Found_FSRef(Instance& instance, std::uint32_t kind, const FSRef& ref,
                        std::u16string_view name, const FSCatalogInfo& info) {
  if (Check_File_Type(instance, kind, name, info) != 0) do_Set_iterate_Handle(instance, ref);
}

std::int32_t Finish_Return_Search(Instance& instance, FSRef& ref) {
  const Handle list = Get_iterate_Handle(instance);
  if (GetHandleSize(list) < kFSRefSize) {
    Dispose_iterate_Handle(instance);
    return 0;
  }
  ref = itemOfList(list, 0);
  return 1;
}

std::int32_t Search_First(Instance& instance, std::uint32_t kind, FSRef& ref) {
  do_Search_ItemForFSRef(instance, kind, ref, false);
  return Finish_Return_Search(instance, ref);
}

std::int32_t ScanforApplicationFile(Instance& instance, FSRef& ref) {
  FileManager& files = instance.platform().fileManager;
  if (files.FSFindFolder(kOnAppropriateDisk, kApplicationsFolderType, ref) != noErr) return 0;
  for (const std::uint32_t kind : {kSearchApplicationFolder, kSearchApplication}) {
    if (Search_First(instance, kind, ref) == 0) return 0;
  }
  Log(instance, "Got  Quorvane app");
  NSLog_File_Dir_Name(instance, ref);
  Dispose_iterate_Handle(instance);
  return 1;
}

std::int32_t ScanforQorvPrefFile(Instance& instance, FSRef& ref) {
  do_Search_ItemForFSRef(instance, kSearchPreferencesFile, ref, false);
  const Handle list = Get_iterate_Handle(instance);
  if (GetHandleSize(list) < kFSRefSize) return 0;
  ref = itemOfList(list, 0);
  Dispose_iterate_Handle(instance);
  return 1;
}

}  // namespace quorvane
