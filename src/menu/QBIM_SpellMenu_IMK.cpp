#include "src/menu/QBIM_SpellMenu_IMK.h"

#include <utility>

#include "src/base/Log.h"
#include "src/bridge/NSFileManager_search.h"
#include "src/bridge/ResFile.h"
#include "src/bridge/ToolCalls.h"
#include "src/menu/FileSubmenu.h"
#include "src/menu/InputMenu.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kSpellingHead = "SpLg"_4cc;
constexpr std::uint32_t kFirstSpellingItem = 2001;

std::optional<std::u16string> dictionaryTitle(Instance& instance, const FSRef& file) {
  const auto name = nameOfFile(instance, file);
  if (!name) return std::nullopt;
  return titleOfName(instance, str_Nospace(*name));
}

constexpr FileSubmenu kSpellingSubmenu{kSpellingHead, kFirstSpellingItem, dictionaryTitle,
                                       spelling::GetDictionaryswitch};

/// Beside the dictionaries' folder where there is none.
bool walkToSpellingFolder(Instance& instance, FSRef& folder) {
  if (!findQuorvaneFolder(instance, folder)) return false;
  Search_First(instance, kSearchDictionariesFolder, folder);
  return Search_First(instance, kSearchSpellingFolder, folder) != 0;
}

/// The first one; equal titles are told apart by nothing.
std::optional<FSRef> dictionaryTitled(Instance& instance, const Handle& files,
                                      const std::u16string& title) {
  for (std::size_t i = 0; i < countOfList(files); ++i) {
    const FSRef file = itemOfList(files, i);
    if (dictionaryTitle(instance, file) == title) return file;
  }
  return std::nullopt;
}

void putSwitch(Instance& instance, bool on) {
  ResourceManager& resources = instance.platform().resourceManager;
  const Handle content = resources.Get1Resource(kFileSwitch, kFileSwitchID);
  if (GetHandleSize(content) == 0) return;
  content->content[0] = on ? 1 : 0;
  Log(instance, "Spelling switch ", on ? 1 : 0);
  resources.ChangedResource(content);
  if (resources.ResError() != noErr) return;
  resources.WriteResource(content);
  Log(instance, "Spelling switch written: ", resources.ResError());
}

/// False where the file can't be opened. One without a switch stays without.
bool writeSwitch(Instance& instance, const FSRef& file, bool on) {
  const CurrentResFile open(
      instance, [&file](Instance& in) { return Do_FS_OpenResFile(in, file, fsCurPerm); });
  if (open) putSwitch(instance, on);
  return static_cast<bool>(open);
}

void moveDateOfParent(Instance& instance, const FSRef& file) {
  FSRef folder;
  const OSStatus status =
      instance.platform().fileManager.FSGetCatalogInfo(file, 0, nullptr, nullptr, &folder);
  if (status == noErr) moveDateOfFolder(instance, file, folder);
}

}  // namespace

void Init_Spell_Menu_Files(Instance& instance) {
  auto& state = instance.state<SpellMenuState>();
  if (ScanforSpellFile(instance, state.SpellFSRef) == 0) return;
  state.init_Spell_fsrefHandle = filesOf(instance, kSearchSpellingFiles, state.SpellFSRef);
  state.init_Spell = true;
}

std::size_t MSPELLCreateMenu(Instance& instance, std::uint32_t /*ignored*/) {
  return spelling::GetMenuFiles(instance);
}

// A file without a switch has its mark turned over until the submenu is built again.
void SaveSPELLCreateMenuItem(Instance& instance, std::int32_t index) {
  const std::uint32_t item = kFirstSpellingItem + static_cast<std::uint32_t>(index);
  const auto title = NSMenu_GetMenuItemText(instance, item);
  const bool on = !NS_Get_CheckMark_MenuItem(instance, item);
  NS_CheckMark_MenuItem(instance, item, on);
  const Handle files = Get_AUX_SpellFiles_Handle(instance);
  const auto file = title ? dictionaryTitled(instance, files, *title) : std::nullopt;
  if (!file || !writeSwitch(instance, *file, on)) return;
  Do_UpdateDictionarySettings(instance);
  moveDateOfParent(instance, *file);
}

std::int32_t ScanforSpellFile(Instance& instance, FSRef& ref) {
  auto& state = instance.state<SpellMenuState>();
  state.usesStoredFolder = !state.usesStoredFolder;
  const bool isKnown = instance.platform().fileManager.FSIsFSRefValid(state.SpellingFolderRef);
  if (!state.usesStoredFolder || !isKnown) {
    FSRef folder;
    const bool found = walkToSpellingFolder(instance, folder);
    Dispose_iterate_Handle(instance);
    if (!found) return 0;
    state.SpellingFolderRef = folder;
  }
  ref = state.SpellingFolderRef;
  return 1;
}

Handle Get_AUX_SpellFiles_Handle(Instance& instance) {
  FSRef& folder = instance.state<SpellMenuState>().SpellFSRef;
  if (ScanforSpellFile(instance, folder) == 0) return nullptr;
  return filesOf(instance, kSearchSpellingFiles, folder);
}

std::int32_t Spelling_GetNewFinfo_ModDate(Instance& instance, const FSRef& folder) {
  return isDateUnchanged(instance, folder, instance.state<SpellMenuState>().folderDate);
}

std::string_view str_Nospace(std::string_view name) {
  const std::size_t end = name.find_last_of(" _");
  return end == name.npos || end == 0 ? name : name.substr(0, end);
}

namespace spelling {

std::size_t GetMenuFiles(Instance& instance) {
  auto& state = instance.state<SpellMenuState>();
  const std::size_t count = SubMenu_Count(instance, kSpellingHead);
  if (!state.init_Spell) Init_Spell_Menu_Files(instance);
  if (count != 0 && Spelling_GetNewFinfo_ModDate(instance, state.SpellFSRef) != 0) return count;
  Handle files = std::exchange(state.init_Spell_fsrefHandle, nullptr);
  if (files == nullptr) files = Get_AUX_SpellFiles_Handle(instance);
  if (showFiles(instance, kSpellingSubmenu, files)) {
    Spelling_GetNewFinfo_ModDate(instance, state.SpellFSRef);
  }
  return count;
}

bool GetDictionaryswitch(Instance& instance, const FSRef& file) {
  return switchOfFile(instance, file, true);
}

}  // namespace spelling
}  // namespace quorvane
