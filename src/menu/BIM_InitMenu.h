#pragma once
// The Carbon side of the Input Menu: which command stands at which position.

#include "src/base/Instance.h"

namespace quorvane {

struct InitMenuState {
  bool numbered = false;
};

/// Gives every item its command id. Once only; nothing without a menu.
void Init_Main_InputMenuItems(Instance& instance, NSMenu* menu);
/// Positions count from 1. One that isn't there is logged.
void SetItemWithCommandID(Instance& instance, NSMenu& menu, std::uint32_t position,
                          std::uint32_t commandID);
/// Of the item at `subPosition` in the submenu of the item at `position`. Nothing without such a
/// submenu.
void SetMenuItemSubMenuItemCommandID(Instance& instance, NSMenu& menu, std::uint32_t ignored,
                                     std::uint32_t position, std::uint32_t subPosition,
                                     std::uint32_t ignoredToo, std::uint32_t commandID);

/// The menu that typed keys are matched with; null: none.
void Set_MacPantherMenu(Instance& instance, NSMenu* menu);
/// That of `qorvinputMenu`, where there is one yet.
NSMenu* Get_MainMenu(Instance& instance);
// Empty: the menu of the nib is used as it is.
void NewCarbonMenu(NSMenu* menu);
void Renew_MainMenu();

}  // namespace quorvane
