#pragma once
// Finding files and folders of the main application by name or by type and creator. A search looks
// through one folder and leaves what it found as a list, sorted by name; searches are chained, each
// from what the one before has found. There is one list, which a new search throws away.

#include <array>
#include <span>
#include <string_view>

#include "src/base/Instance.h"

namespace quorvane {

/// What a search looks for. Any other number finds nothing.
enum SearchKind : std::uint32_t {
  kSearchSpellingFiles = 1,
  kSearchQuorvaneFolder = 3,
  kSearchDictionariesFolder = 5,
  kSearchSpellingFolder = 6,
  kSearchAutoTypeFolder = 7,
  kSearchApplication = 8,
  kSearchApplicationFolder = 9,
  kSearchApplicationsFolder = 10,
  kSearchParameterFile = 18,
  kSearchAutoTypeFiles = 20,
  kSearchQuorvaneFile = 25,
  kSearchPreferencesFile = 26,
};

struct FileSearchState {
  Handle iterate_Handle;            ///< FSRefs, one behind the other; null: no list
  std::uint32_t iterate_COUNT = 0;  ///< those in use
};

inline constexpr std::size_t kFSRefSize = sizeof(FSRef);

// --- Searching -----------------------------------------------------------------------------------

/// Throws the old list away, searches, sorts.
void do_Search_ItemForFSRef(Instance& instance, std::uint32_t kind, const FSRef& folder,
                            bool recurse);
void Search_ItemForFSRef(Instance& instance, std::uint32_t kind, const FSRef& folder, bool recurse);
/// 1, and the item is in the list, where it is a folder of that kind.
std::int32_t Check_Directory_FSRef(Instance& instance, std::uint32_t kind, const FSRef& ref,
                                   std::u16string_view name);
/// 1 where it is a file of that kind.
std::int32_t Check_File_Type(Instance& instance, std::uint32_t kind, std::u16string_view name,
                             const FSCatalogInfo& info);
void Append_Found_FSRef(Instance& instance, std::uint32_t kind, const FSRef& ref,
                        std::u16string_view name, const FSCatalogInfo& info);
/// 1 and the first item; 0 where there is none, and then an empty list goes.
std::int32_t Finish_Return_Search(Instance& instance, FSRef& ref);
/// A step of a chain: a search through `ref`, which becomes the first item found; 0 and it stays
/// where there is none.
std::int32_t Search_First(Instance& instance, std::uint32_t kind, FSRef& ref);
/// `Quorvane.app` in its folder in the Applications folder; 1 where there is one.
std::int32_t ScanforApplicationFile(Instance& instance, FSRef& ref);
/// In: the Preferences folder; out: the file. An empty list stays.
std::int32_t ScanforQorvPrefFile(Instance& instance, FSRef& ref);

// --- The list ------------------------------------------------------------------------------------

Handle Get_iterate_Handle(Instance& instance);
/// The list itself, out of reach of the next search. Null where there is none.
Handle Take_iterate_Handle(Instance& instance);
std::size_t countOfList(const Handle& list);
/// The `index`-th FSRef of a list, which must have so many.
FSRef itemOfList(const Handle& list, std::size_t index);
/// Makes the list if there is none.
void Set_iterate_Handle(Instance& instance);
void Set_New_iterate_Handle(Instance& instance, const Handle& block);
void Start_iterate_Count(Instance& instance);
void do_Set_iterate_Handle(Instance& instance, const FSRef& ref);
/// Trims the list to what is in it, and sorts it.
void Reset_iterate_Handle(Instance& instance);
void Dispose_iterate_Handle(Instance& instance);

void insertionSort(Instance& instance, const Handle& block);
/// Where `name` goes among the items `low` to `high`. Equal names go behind or before, as it comes.
std::int32_t binarySearch(Instance& instance, const Handle& block, const std::uint8_t* name,
                          std::int32_t low, std::int32_t high);
/// As STRCMPAR of `name` and the item's.
std::int32_t BINCOMPARE(Instance& instance, const Handle& block, const std::uint8_t* name,
                        std::int32_t index);

// --- Names ---------------------------------------------------------------------------------------

/// Holds any name and its terminator.
using FileName = std::array<std::uint8_t, 256>;

OSStatus FSGetFileDirName(Instance& instance, const FSRef& ref, std::u16string& out);
/// Mac OS Roman. What doesn't convert leaves `out`.
void FSGetFileDirName_ToCString(Instance& instance, const FSRef& ref, std::span<std::uint8_t> out);
void UnicodeToCString(Instance& instance, std::u16string_view name, std::span<std::uint8_t> out);

// Log lines.
void Print_path(Instance& instance, const FSRef& ref);
void NSLog_File_Dir_Name(Instance& instance, const FSRef& ref);

}  // namespace quorvane
