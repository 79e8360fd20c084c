#pragma once
// The Input Menu of this process: whose it is, and how its items are found. Walks go depth first
// through the whole menu; without one, and for a tag that no item has, nothing happens.
//
// An item is enabled where it has an action. A leaf is an item without a submenu.

#include <optional>
#include <string>
#include <string_view>

#include "src/base/Instance.h"

namespace quorvane {

struct InputMenuState {
  NSMenu* qorvinputMenu = nullptr;    ///< of the nib, which outlives us; null: not loaded
  NSMenu* gMacPantherMenu = nullptr;  ///< the one that typed keys are matched with
  NSMenu* gPencilMenu = nullptr;
  // Mac OS Roman bytes of the Pascal strings.
  std::string OpenMenuItemStr;
  std::string QuitMenuItemStr;
};

NSMenu* Quorvane_InputAppDelegate_menu(Instance& instance);

/// The generic action that an enabled item has.
inline constexpr std::string_view kSubMenuActions = "SubMenuActions:";
void do_Set_SubMenuActions(const void* ignored, NSMenuItem& item);
void Set_MenuItem_ActionEnable(NSMenuItem& item, std::int64_t tag);

// --- Enabled, hidden, checked --------------------------------------------------------------------

/// Every leaf that has a tag.
void EnableAll_NSMenuItems(Instance& instance, bool enable);
void Enable_All_walkMenu(NSMenu& menu, bool enable);
/// The item of that tag, a head of a submenu too. Each level stops at its first.
void EnableNSMenuItemTag(Instance& instance, std::int64_t tag, bool enable);
void EnableNSMenuItem(Instance& instance, std::uint32_t commandID, bool enable);
void Enable_walkMenu(NSMenu& menu, std::int64_t tag, bool enable);

void SetHidden_NSMenuItem(Instance& instance, std::int64_t tag, bool hidden);
void SetHidden_walkMenu(NSMenu& menu, std::int64_t tag, bool hidden);

void NS_CheckMark_MenuItem_FromTag(Instance& instance, std::int64_t tag, bool on);
void NS_CheckMark_MenuItem(Instance& instance, std::uint32_t commandID, bool on);
void CheckMark_walkMenu(NSMenu& menu, std::int64_t tag, bool on);
/// True where a leaf of that tag has a check mark.
bool NS_Get_CheckMark_MenuItem(Instance& instance, std::uint32_t commandID);
bool Get_CheckMark_walkMenu(NSMenu& menu, std::int64_t tag);

// --- Titles --------------------------------------------------------------------------------------

/// Of the first leaf of that command; none: there is none.
std::optional<std::u16string> NSMenu_GetMenuItemText(Instance& instance, std::uint32_t commandID);
/// Mac OS Roman bytes.
void NSMenu_SetMenuItemText(Instance& instance, std::uint32_t commandID, std::string_view roman);
void NSMenu_SetMenuItem_NSstring(Instance& instance, std::uint32_t commandID,
                                 const std::u16string& title);
/// The tag of the first leaf of that title; 0: none.
std::int64_t NS_Compare_Menuitems(Instance& instance, std::u16string_view title);
std::int64_t NSMenu_CompareMenuItem_NSstring_walkMenu(NSMenu& menu, std::u16string_view title);
/// A string of UTF-8, Shift JIS or ASCII bytes, the first of these that they make one in.
std::optional<std::u16string> stringWithChar(Instance& instance,
                                             std::span<const std::uint8_t> bytes);

// --- Submenus that are filled: of top-level items ------------------------------------------------

/// Null: no such item, or it has no submenu. `parentOut` may be null.
NSMenu* GetSubMenu_walkMenu(Instance& instance, std::uint32_t commandID, NSMenuItem** parentOut);
/// A new item that is enabled, at the end of the menu.
void NewMenuItem(NSMenu& menu, const std::u16string& title, const NSMenuItem* parent,
                 std::int64_t tag);
void Set_NewMenuItem(NSMenu& menu, const std::u16string& title, std::int64_t tag);
void AddMenuItem_walkMenu(Instance& instance, std::uint32_t commandID, const std::u16string& title,
                          std::int64_t tag);
std::size_t SubMenu_Count(Instance& instance, std::uint32_t commandID);
void RemoveAll_SubMenu_Items(Instance& instance, std::uint32_t commandID);
/// The leaves from `index` down to the first.
void Remove_SubMenu_Item(Instance& instance, std::uint32_t commandID, std::size_t index);
void RemoveMenuItems(NSMenu& menu, std::size_t index);
/// Of the menu itself.
void Remove_Menu_Item(Instance& instance, std::size_t index);

}  // namespace quorvane
