#include "src/menu/QBIM_AutoType_IMK.h"

#include <utility>

#include "src/bridge/NSFileManager_search.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/menu/FileSubmenu.h"
#include "src/menu/InputMenu.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kAutoTypeHead = "ATyp"_4cc;
constexpr std::uint32_t kFirstAutoTypeItem = 3001;

std::optional<std::u16string> abbreviationsTitle(Instance& instance, const FSRef& file) {
  const auto name = nameOfFile(instance, file);
  if (!name) return std::nullopt;
  return titleOfName(instance, *name);
}

constexpr FileSubmenu kAutoTypeSubmenu{kAutoTypeHead, kFirstAutoTypeItem, abbreviationsTitle,
                                       autotype::GetDictionaryswitch};

bool walkToAutoTypeFolder(Instance& instance, FSRef& folder) {
  return findQuorvaneFolder(instance, folder) &&
         Search_First(instance, kSearchDictionariesFolder, folder) != 0 &&
         Search_First(instance, kSearchAutoTypeFolder, folder) != 0;
}

}  // namespace

void Init_AutoType_Menu_Files(Instance& instance) {
  auto& state = instance.state<AutoTypeState>();
  if (Get_AutoType_Folder(instance, state.AutotypeRef) == 0) return;
  state.init_AutoType_fsrefHandle = filesOf(instance, kSearchAutoTypeFiles, state.AutotypeRef);
}

std::int32_t Get_AutoType_Menu(Instance& instance, std::uint32_t /*ignored*/) {
  return autotype::GetMenuFiles(instance);
}

void SaveAutoTypeCreateMenuItem(Instance& instance, std::uint32_t number) {
  const auto& state = instance.state<AutoTypeState>();
  const Handle files = filesOf(instance, kSearchAutoTypeFiles, state.AutoTypeFolderRef);
  const std::size_t index = number == 0 ? 0 : number - 1;
  if (index >= countOfList(files)) return;
  moveDateOfFolder(instance, itemOfList(files, index), state.AutotypeRef);
}

std::int32_t Get_AutoType_Folder(Instance& instance, FSRef& ref) {
  FSRef folder;
  const bool found = walkToAutoTypeFolder(instance, folder);
  Dispose_iterate_Handle(instance);
  if (!found) return 0;
  ref = instance.state<AutoTypeState>().AutoTypeFolderRef = folder;
  return 1;
}

std::int32_t AutoType_GetNewFinfo_ModDate(Instance& instance, const FSRef& folder) {
  return isDateUnchanged(instance, folder, instance.state<AutoTypeState>().folderDate);
}

std::uint32_t Get_AutoType_Selection(Instance& instance) {
  return ToolRec(instance).get(ToolCRecPtr_AutoTypeSelection);
}

namespace autotype {

std::int32_t GetMenuFiles(Instance& instance) {
  auto& state = instance.state<AutoTypeState>();
  Init_AutoType_Menu_Files(instance);
  const bool hasItems = SubMenu_Count(instance, kAutoTypeHead) != 0;
  if (hasItems && AutoType_GetNewFinfo_ModDate(instance, state.AutotypeRef) != 0) return 0;
  Handle files = std::exchange(state.init_AutoType_fsrefHandle, nullptr);
  if (files == nullptr) files = filesOf(instance, kSearchAutoTypeFiles, state.AutoTypeFolderRef);
  if (showFiles(instance, kAutoTypeSubmenu, files)) {
    AutoType_GetNewFinfo_ModDate(instance, state.AutotypeRef);
  }
  return 0;
}

bool GetDictionaryswitch(Instance& instance, const FSRef& file) {
  return switchOfFile(instance, file, false);
}

}  // namespace autotype
}  // namespace quorvane
