#pragma once
// Which items may be chosen and which carry a check mark, by what the main application says in the
// tool record and by the switches of the application in front. Worked out at the opening of the
// menu and after a command of it; nothing drives it in between.

#include <array>

#include "platform/Units.h"
#include "src/base/Instance.h"

namespace quorvane {

struct MenuUpdateState {
  /// What the open-or-quit item says; null: what it came with.
  const std::string* OLDCHECKMARKQUITMENUNUSTATESTR = nullptr;
  std::array<Ticks, 4> Menu_timerinterval{};
};

/// After a command.
void Set_Main_Menu(Instance& instance);
/// At the opening. `suggestions`: the suggestion state of the active session, 0 without one. The
/// item isn't used.
void NS_IMK_PencilMenuEnableItems(Instance& instance, const NSMenuItem* item,
                                  std::uint32_t suggestions);
/// The items of interactive checking; `interactive` 0: all switches read as off.
void NS_Set_InteractiveMenuItems(Instance& instance, const NSMenuItem* item,
                                 std::uint32_t interactive);
/// The check commands.
void NS_Set_CheckAllMenuItems(Instance& instance, bool on);
/// Open or Quit, by whether the main application runs.
void SETOPENQUITMENUTEXT(Instance& instance);

/// Builds the submenu of that head, where something has changed; an empty one stays closed. All
/// three are closed while the main application can't be used.
void Set_up_Submenus(Instance& instance, std::uint32_t commandID);
void Get_Spelling_Submenu(Instance& instance);
void GetAndSet_Style_SubMenu(Instance& instance, std::uint32_t commandID);

/// 1 no more often than every 90 ticks for each index; else 0.
std::int32_t Get_Menu_Interval(Instance& instance, std::size_t index);

/// Another tool record than before may want another menu.
void SetMenuWhenAppChanges(Instance& instance);

// Empty: the menu has no icon and needs no notes.
void SetGrammarMenuIcon();
void print_menucontext();

}  // namespace quorvane
