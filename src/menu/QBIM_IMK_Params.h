#pragma once
// The parameter file: per-application switches, key shortcuts, flags. It belongs to the main
// application; without it the switches stay as they are and every flag reads as 0.

#include "src/base/Instance.h"
#include "src/menu/ParamsLayout.h"

namespace quorvane {

struct ParamsState {
  FSRef GrammarFolderRef;    ///< the file, once it has been found
  Handle QORVMENUKEYSHAND;   ///< QKYS, while it is being loaded
  Handle QORVMENUKEYSXHAND;  ///< QKYX, likewise
  std::uint8_t Global_PencilMenuFlag = 1;
  FourCharCode LASTGLOBALAPPLSIG = 0;          ///< loaded for, before 10.7 …
  std::int32_t LASTGLOBALAPPLSIG_app_pid = 0;  ///< … and from then on
};

/// 1 where the file is known or was found.
std::int32_t Get_APPParamsLocation(Instance& instance);
/// The file's reference number, and it is current; -1 where it can't be opened.
std::int32_t Open_Params_ResourceFile(Instance& instance);
/// Loads switches and shortcuts of the application in front, and puts these on the menu. While that
/// is the same, nothing happens and nothing is asked of the system.
void GetAndSetMenuParams3(Instance& instance);

/// The same where the record's switches differ from ours.
void Get_Qorvatatus_Flags(Instance& instance);

// Switches of the application in front.

/// With the file current. CURRENTAPPFLAGSTATUS and the record's copy take what the file says.
void GetAppInteractivedata(Instance& instance);
/// Puts CURRENTAPPFLAGSTATUS into the file; a word of 0 frees the application's record.
void SaveAppInteractivedata(Instance& instance);

// Flags.

/// A byte of `AutC`, by the low 8 bits of `index`; 0 where there is none.
std::uint8_t Get_GlobalAutoCompleteFlag(Instance& instance, std::size_t index);
/// Reads it anew; what it was before where that fails.
std::uint8_t Get_GlobalPencilMenuFlag(Instance& instance);
void Set_FlagMenuActivationFlag(Instance& instance, std::uint8_t flag);

// Shortcuts.

/// Records of the application in front, else those of every application, from what is being loaded.
/// `countOut` may be null.
const std::uint8_t* GetMenuKeysPtr(Instance& instance, std::uint32_t* countOut);

// Resources.

/// The result of writing it, 0 or why it failed.
std::int16_t Write_Changed_Resource(Instance& instance, const Handle& handle);
/// From the current file, made with so many bytes where it has none; null where that fails.
Handle getOrMakeResource(Instance& instance, FourCharCode type, std::int16_t id, std::size_t size);

}  // namespace quorvane
