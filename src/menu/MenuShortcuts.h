#pragma once
// Key shortcuts of the menu's commands: those of the application in front, shown on the items as
// key equivalents, and found again by the key that was typed.

#include "src/base/Instance.h"
#include "src/menu/ParamsLayout.h"

namespace quorvane {

struct MenuShortcutsState {
  Handle APPQORVMENUKEYSHAND;  ///< of the application last loaded for; null: none
};

/// 1 and the shortcut, or 0, no modifiers and no key. Needs APPQORVMENUKEYSHAND.
std::int32_t GetKeyShortcutForCommandID(Instance& instance, std::uint32_t commandID,
                                        Shortcut& shortcut);
/// A function key, which is a shortcut without modifiers too.
bool IsValidKeyboardShortcut(std::uint32_t keyCode);

/// The command of a typed key in the Input Menu; 0: none.
std::uint32_t NS_GetMenuCommandKeyAction_walkMenu(Instance& instance, std::uint32_t keyCode,
                                                  std::uint32_t modifiers);
/// Of the items of this menu alone: what a submenu's items show isn't matched.
std::uint32_t GetMenuCommandKeyAction_walkMenu(Instance& instance, const NSMenu& menu,
                                               std::uint32_t keyCode, std::uint32_t modifiers);

/// Puts the shortcuts on the items, those of submenus too.
void NS_SetMenuCommandKeyAction_walkMenu(Instance& instance);
void SetMenuCommandKeyAction_walkMenu(Instance& instance, NSMenu& menu);

}  // namespace quorvane
