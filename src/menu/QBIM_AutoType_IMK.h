#pragma once
// The AutoType submenu: the user's files of abbreviations, each with a check mark where it is on.
// One that says nothing of itself is off. The switches are the main application's to write.

#include "src/base/Instance.h"

namespace quorvane {

struct AutoTypeState {
  FSRef AutoTypeFolderRef;           ///< as last found
  FSRef AutotypeRef;                 ///< whose files the submenu shows
  Handle init_AutoType_fsrefHandle;  ///< found last, for the next build; null: used up
  UTCDateTime folderDate;            ///< as last seen
};

/// Looks for the files, unless the folder is missing. Each opening of the menu does so again.
void Init_AutoType_Menu_Files(Instance& instance);
/// Builds the submenu where the folder has changed or there are no items.
std::int32_t Get_AutoType_Menu(Instance& instance, std::uint32_t ignored);
/// An item was chosen, by its place from 1; 0 is the first, too. Its mark follows once the main
/// application has written the switch.
void SaveAutoTypeCreateMenuItem(Instance& instance, std::uint32_t number);

/// 1 and the folder.
std::int32_t Get_AutoType_Folder(Instance& instance, FSRef& ref);
std::int32_t AutoType_GetNewFinfo_ModDate(Instance& instance, const FSRef& folder);
/// What was chosen last, as the record has it; 0 without a record.
std::uint32_t Get_AutoType_Selection(Instance& instance);

namespace autotype {

/// 0.
std::int32_t GetMenuFiles(Instance& instance);
bool GetDictionaryswitch(Instance& instance, const FSRef& file);

}  // namespace autotype
}  // namespace quorvane
