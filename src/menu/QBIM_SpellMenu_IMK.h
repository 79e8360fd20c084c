#pragma once
// The Spelling submenu: the user's dictionaries, each with a check mark where it is on. One that
// says nothing of itself is on.

#include <optional>
#include <string>
#include <string_view>

#include "src/base/Instance.h"

namespace quorvane {

struct SpellMenuState {
  FSRef SpellingFolderRef;        ///< as last found
  FSRef SpellFSRef;               ///< whose files the submenu shows
  bool usesStoredFolder = false;  ///< turns over at each look for the folder
  Handle init_Spell_fsrefHandle;  ///< found at the start, for the first build; null: used up
  bool init_Spell = false;
  UTCDateTime folderDate;  ///< as last seen
};

/// Looks for the files, unless the folder is missing.
void Init_Spell_Menu_Files(Instance& instance);
/// Builds the submenu where the folder has changed or there are no items. How many there were.
std::size_t MSPELLCreateMenu(Instance& instance, std::uint32_t ignored);
/// An item was chosen, by its place from 0: turns its mark over, and the file's switch.
void SaveSPELLCreateMenuItem(Instance& instance, std::int32_t index);

/// 1 and the folder. Every second call takes the stored one, wherever that lies by now.
std::int32_t ScanforSpellFile(Instance& instance, FSRef& ref);
/// Null where there is no folder.
Handle Get_AUX_SpellFiles_Handle(Instance& instance);
std::int32_t Spelling_GetNewFinfo_ModDate(Instance& instance, const FSRef& folder);
/// Without what stands behind the last space or underscore, which is never the first character.
std::string_view str_Nospace(std::string_view name);

namespace spelling {

std::size_t GetMenuFiles(Instance& instance);
bool GetDictionaryswitch(Instance& instance, const FSRef& file);

}  // namespace spelling
}  // namespace quorvane
