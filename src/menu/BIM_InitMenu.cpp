#include "src/menu/BIM_InitMenu.h"

#include <array>
#include <string_view>

#include "src/base/Log.h"
#include "src/menu/InputMenu.h"

namespace quorvane {
namespace {

/// Positions from 1 on each level; 0: no further level.
struct NumberedItem {
  std::array<std::uint8_t, 3> path;
  std::uint32_t commandID;
};
constexpr std::array<NumberedItem, 43> kItems{{
    {{1}, "CkAl"_4cc},        {{3}, "CkSp"_4cc},        {{4}, "CkSe"_4cc},
    {{5}, "CkSb"_4cc},        {{7}, "CkMk"_4cc},        {{9}, "Tiac"_4cc},
    {{9, 1}, "Timc"_4cc},     {{9, 3}, "Tsia"_4cc},     {{9, 4}, "Tgia"_4cc},
    {{9, 5}, "Tacr"_4cc},     {{9, 6}, "Taty"_4cc},     {{9, 8}, "Tsas"_4cc},
    {{9, 9}, "Tgss"_4cc},     {{9, 11}, "Tgpm"_4cc},    {{9, 12}, "Tgso"_4cc},
    {{10}, "ShSg"_4cc},       {{12}, "LkUp"_4cc},       {{14}, "MWSt"_4cc},
    {{15}, "SpLg"_4cc},       {{16}, "ATyp"_4cc},       {{18}, "TxTL"_4cc},
    {{18, 1}, "FmTL"_4cc},    {{18, 1, 1}, "FMPr"_4cc}, {{18, 1, 2}, "RMsp"_4cc},
    {{18, 1, 3}, "ReMQ"_4cc}, {{18, 2}, "CvTL"_4cc},    {{18, 2, 1}, "AlCp"_4cc},
    {{18, 2, 2}, "LwCs"_4cc}, {{18, 3}, "InTL"_4cc},    {{18, 3, 1}, "DaTs"_4cc},
    {{18, 3, 2}, "DaTl"_4cc}, {{18, 3, 3}, "DaTa"_4cc}, {{18, 3, 5}, "DTTs"_4cc},
    {{18, 3, 6}, "DTTl"_4cc}, {{18, 3, 7}, "DTTa"_4cc}, {{18, 3, 9}, "DTTu"_4cc},
    {{20}, "CkRd"_4cc},       {{21}, "Grph"_4cc},       {{23}, "GtWr"_4cc},
    {{24}, "GtMs"_4cc},       {{26}, "GtHp"_4cc},       {{27}, "GtAb"_4cc},
    {{29}, "QtOp"_4cc},
}};

std::array<char, 4> inReadingOrder(std::uint32_t code) {
  return {static_cast<char>(code >> 24), static_cast<char>(code >> 16),
          static_cast<char>(code >> 8), static_cast<char>(code)};
}

void number(Instance& instance, NSMenu& menu, const NumberedItem& item) {
  const auto [first, second, third] = item.path;
  if (second == 0) return SetItemWithCommandID(instance, menu, first, item.commandID);
  if (third == 0) {
    SetMenuItemSubMenuItemCommandID(instance, menu, 0, first, second, 0, item.commandID);
    return;
  }
  NSMenu* submenu = nullptr;
  GetMenuItemHierarchicalMenu(menu, first, submenu);
  if (submenu == nullptr) return;
  SetMenuItemSubMenuItemCommandID(instance, *submenu, 0, second, third, 0, item.commandID);
}

}  // namespace

void Init_Main_InputMenuItems(Instance& instance, NSMenu* menu) {
  auto& state = instance.state<InitMenuState>();
  if (menu == nullptr || state.numbered) return;
  state.numbered = true;
  for (const NumberedItem& item : kItems) number(instance, *menu, item);
}

void SetItemWithCommandID(Instance& instance, NSMenu& menu, std::uint32_t position,
                          std::uint32_t commandID) {
  if (SetMenuItemCommandID(menu, position, commandID) == noErr) return;
  const auto code = inReadingOrder(commandID);
  Log(instance, "SetMenuItemCommandID err: ", std::string_view(code.data(), code.size()));
}

void SetMenuItemSubMenuItemCommandID(Instance& instance, NSMenu& menu, std::uint32_t /*ignored*/,
                                     std::uint32_t position, std::uint32_t subPosition,
                                     std::uint32_t /*ignoredToo*/, std::uint32_t commandID) {
  NSMenu* submenu = nullptr;
  const OSStatus status = GetMenuItemHierarchicalMenu(menu, position, submenu);
  if (status != noErr || submenu == nullptr || subPosition < 1) return;
  SetItemWithCommandID(instance, *submenu, subPosition, commandID);
}

void Set_MacPantherMenu(Instance& instance, NSMenu* menu) {
  instance.state<InputMenuState>().gMacPantherMenu = menu;
}

NSMenu* Get_MainMenu(Instance& instance) {
  NSMenu* const menu = instance.state<InputMenuState>().qorvinputMenu;
  if (menu != nullptr) NewCarbonMenu(menu);
  return menu;
}

void NewCarbonMenu(NSMenu* /*menu*/) {}

void Renew_MainMenu() {}

}  // namespace quorvane
