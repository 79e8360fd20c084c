// Submenus that are filled as the program runs. Their heads are items of the menu itself.

#include <algorithm>

#include "src/menu/InputMenu.h"
#include "src/menu/MenuTable.h"

namespace quorvane {
namespace {

void removeAt(NSMenu& menu, std::size_t index) {
  if (index >= menu.itemArray.size()) return;
  menu.itemArray.erase(menu.itemArray.begin() + static_cast<std::ptrdiff_t>(index));
}

}  // namespace

NSMenu* GetSubMenu_walkMenu(Instance& instance, std::uint32_t commandID, NSMenuItem** parentOut) {
  NSMenu* const menu = Quorvane_InputAppDelegate_menu(instance);
  const std::int64_t tag = Convert_CommandIDToTag(commandID);
  if (menu == nullptr || tag == 0) return nullptr;
  const auto head = std::ranges::find(menu->itemArray, tag, &NSMenuItem::tag);
  if (head == menu->itemArray.end()) return nullptr;
  if (parentOut != nullptr) *parentOut = head->get();
  return (*head)->submenu.get();
}

void NewMenuItem(NSMenu& menu, const std::u16string& title, const NSMenuItem* /*parent*/,
                 std::int64_t tag) {
  auto item = std::make_unique<NSMenuItem>();
  item->title = title;
  item->tag = tag;
  do_Set_SubMenuActions(nullptr, *item);
  menu.itemArray.push_back(std::move(item));
}

void Set_NewMenuItem(NSMenu& menu, const std::u16string& title, std::int64_t tag) {
  NewMenuItem(menu, title, nullptr, tag);
}

void AddMenuItem_walkMenu(Instance& instance, std::uint32_t commandID, const std::u16string& title,
                          std::int64_t tag) {
  NSMenuItem* parent = nullptr;
  if (NSMenu* const submenu = GetSubMenu_walkMenu(instance, commandID, &parent)) {
    NewMenuItem(*submenu, title, parent, tag);
  }
}

std::size_t SubMenu_Count(Instance& instance, std::uint32_t commandID) {
  const NSMenu* const submenu = GetSubMenu_walkMenu(instance, commandID, nullptr);
  return submenu != nullptr ? submenu->itemArray.size() : 0;
}

void RemoveAll_SubMenu_Items(Instance& instance, std::uint32_t commandID) {
  NSMenu* const submenu = GetSubMenu_walkMenu(instance, commandID, nullptr);
  while (submenu != nullptr && !submenu->itemArray.empty()) submenu->itemArray.pop_back();
}

void Remove_SubMenu_Item(Instance& instance, std::uint32_t commandID, std::size_t index) {
  if (NSMenu* const submenu = GetSubMenu_walkMenu(instance, commandID, nullptr)) {
    RemoveMenuItems(*submenu, index);
  }
}

void RemoveMenuItems(NSMenu& menu, std::size_t index) {
  const std::size_t count = menu.itemArray.size();
  const std::size_t end = index < count ? index + 1 : count;
  for (std::size_t i = end; i > 0; --i) {
    if (!menu.itemArray[i - 1]->submenu) removeAt(menu, i - 1);
  }
}

void Remove_Menu_Item(Instance& instance, std::size_t index) {
  if (NSMenu* const menu = Quorvane_InputAppDelegate_menu(instance)) removeAt(*menu, index);
}

}  // namespace quorvane
