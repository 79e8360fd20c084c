#include "src/menu/MenuShortcuts.h"

#include <algorithm>
#include <array>

#include "src/base/Modifiers.h"
#include "src/keys/AsciiToKeyCode.h"
#include "src/menu/InputMenu.h"
#include "src/menu/MenuTable.h"
#include "src/menu/MenuWalk.h"

namespace quorvane {
namespace {

constexpr std::array<std::uint16_t, 15> kFunctionKeys{96,  97,  98,  99,  100, 101, 103, 105,
                                                      107, 109, 111, 113, 118, 120, 122};
/// F1 to F9, each with the unit behind that of the last; those above show what their key types.
constexpr std::array<std::uint16_t, 9> kKeysShownByUnit{122, 120, 99, 118, 96, 97, 98, 100, 101};
constexpr char16_t kFirstUnit = 0xF704;

std::uint32_t commandOf(const NSMenuItem& item) {
  return Convert_TagToCommandID(static_cast<std::int32_t>(item.tag));
}

std::uint16_t keyOf(const Shortcut& shortcut) {
  return static_cast<std::uint16_t>(shortcut.keyCode);
}

bool isTyped(const Shortcut& shortcut, std::uint32_t keyCode, std::uint32_t modifiers) {
  return shortcut.keyCode != -1 && keyOf(shortcut) == keyCode && shortcut.modifiers == modifiers;
}

// Its mask stays as it was: so does that of any key without modifiers.
void showByUnit(NSMenuItem& item, std::ptrdiff_t place) {
  item.keyEquivalent = static_cast<char16_t>(kFirstUnit + place);
}

void show(NSMenuItem& item, const Shortcut& shortcut, const std::u16string& text) {
  const auto* const key = std::ranges::find(kKeysShownByUnit, keyOf(shortcut));
  if (key != kKeysShownByUnit.end()) return showByUnit(item, key - kKeysShownByUnit.begin());
  const std::uint32_t mask = flagsOfModifiers(shortcut.modifiers & ~alphaLock);
  if (mask != 0) item.keyEquivalentModifierMask = mask;
  item.keyEquivalent = text;
}

void showShortcut(Instance& instance, NSMenuItem& item) {
  Shortcut shortcut;
  const std::uint32_t command = commandOf(item);
  if (command != 0) GetKeyShortcutForCommandID(instance, command, shortcut);
  if (shortcut.keyCode == -1) return item.keyEquivalent.clear();
  const auto text = createStringForKey(instance, keyOf(shortcut));
  if (text) show(item, shortcut, *text);
}

}  // namespace

std::int32_t GetKeyShortcutForCommandID(Instance& instance, std::uint32_t commandID,
                                        Shortcut& shortcut) {
  const Handle& handle = instance.state<MenuShortcutsState>().APPQORVMENUKEYSHAND;
  const std::size_t size = GetHandleSize(handle);
  for (std::size_t at = 0; at + sizeof(Shortcut) <= size; at += sizeof(Shortcut)) {
    const auto record = recordAt<Shortcut>(handle->content, at);
    if (record.commandID != commandID) continue;
    shortcut = record;
    return 1;
  }
  shortcut = {.commandID = commandID};
  return 0;
}

bool IsValidKeyboardShortcut(std::uint32_t keyCode) {
  return std::ranges::find(kFunctionKeys, keyCode) != kFunctionKeys.end();
}

std::uint32_t NS_GetMenuCommandKeyAction_walkMenu(Instance& instance, std::uint32_t keyCode,
                                                  std::uint32_t modifiers) {
  const NSMenu* const menu = Quorvane_InputAppDelegate_menu(instance);
  if (menu == nullptr) return 0;
  return GetMenuCommandKeyAction_walkMenu(instance, *menu, keyCode, modifiers);
}

std::uint32_t GetMenuCommandKeyAction_walkMenu(Instance& instance, const NSMenu& menu,
                                               std::uint32_t keyCode, std::uint32_t modifiers) {
  for (const auto& item : menu.itemArray) {
    const std::uint32_t command = commandOf(*item);
    Shortcut shortcut;
    if (command == 0 || item->submenu) continue;
    GetKeyShortcutForCommandID(instance, command, shortcut);
    if (isTyped(shortcut, keyCode, modifiers)) return command;
  }
  return 0;
}

void NS_SetMenuCommandKeyAction_walkMenu(Instance& instance) {
  if (NSMenu* const menu = Quorvane_InputAppDelegate_menu(instance)) {
    SetMenuCommandKeyAction_walkMenu(instance, *menu);
  }
}

void SetMenuCommandKeyAction_walkMenu(Instance& instance, NSMenu& menu) {
  walkLeaves(menu, [&](NSMenuItem& leaf) {
    showShortcut(instance, leaf);
    return Walk::GoesOn;
  });
}

}  // namespace quorvane
