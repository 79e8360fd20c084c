#include <span>

#include "src/bridge/BIM_str.h"
#include "src/menu/InputMenu.h"
#include "src/menu/MenuTable.h"
#include "src/menu/MenuWalk.h"

namespace quorvane {
namespace {

constexpr NSStringEncoding kTried[] = {NSStringEncoding::UTF8, NSStringEncoding::ShiftJIS,
                                       NSStringEncoding::ASCII};

}  // namespace

std::optional<std::u16string> NSMenu_GetMenuItemText(Instance& instance, std::uint32_t commandID) {
  std::optional<std::u16string> title;
  NSMenu* const menu = Quorvane_InputAppDelegate_menu(instance);
  if (menu == nullptr) return title;
  changeLeaf(*menu, Convert_CommandIDToTag(commandID), [&](const NSMenuItem& leaf) {
    if (!title) title = leaf.title;
  });
  return title;
}

void NSMenu_SetMenuItemText(Instance& instance, std::uint32_t commandID, std::string_view roman) {
  if (const auto title = textFromRoman(instance, roman)) {
    NSMenu_SetMenuItem_NSstring(instance, commandID, *title);
  }
}

void NSMenu_SetMenuItem_NSstring(Instance& instance, std::uint32_t commandID,
                                 const std::u16string& title) {
  NSMenu* const menu = Quorvane_InputAppDelegate_menu(instance);
  if (menu == nullptr) return;
  changeLeaf(*menu, Convert_CommandIDToTag(commandID),
             [&title](NSMenuItem& leaf) { leaf.title = title; });
}

std::int64_t NS_Compare_Menuitems(Instance& instance, std::u16string_view title) {
  NSMenu* const menu = Quorvane_InputAppDelegate_menu(instance);
  return menu != nullptr ? NSMenu_CompareMenuItem_NSstring_walkMenu(*menu, title) : 0;
}

std::int64_t NSMenu_CompareMenuItem_NSstring_walkMenu(NSMenu& menu, std::u16string_view title) {
  std::int64_t tag = 0;
  walkLeaves(menu, [&](const NSMenuItem& leaf) {
    if (leaf.title != title) return Walk::GoesOn;
    tag = leaf.tag;
    return Walk::Ends;
  });
  return tag;
}

std::optional<std::u16string> stringWithChar(Instance& instance,
                                             std::span<const std::uint8_t> bytes) {
  for (const NSStringEncoding encoding : kTried) {
    auto text = instance.platform().textEncoding.initWithData(bytes, encoding);
    if (text) return text;
  }
  return std::nullopt;
}

}  // namespace quorvane
