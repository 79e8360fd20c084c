#include "apps/desk/OpenMenu.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/AppKitEvents.h"

namespace quorvane::desk {
namespace {

struct ModifierSign {
  std::uint32_t flag;
  char16_t sign;
};
constexpr std::array<ModifierSign, 4> kModifierSigns{{{NSEventModifierFlagControl, u'\u2303'},
                                                      {NSEventModifierFlagOption, u'\u2325'},
                                                      {NSEventModifierFlagShift, u'\u21E7'},
                                                      {NSEventModifierFlagCommand, u'\u2318'}}};

char32_t lowered(char32_t character) {
  return character >= U'A' && character <= U'Z' ? character + 32 : character;
}

std::u16string keyText(const NSMenuItem& item) {
  std::u16string keys;
  if (item.keyEquivalent.empty()) return keys;
  for (const ModifierSign& each : kModifierSigns) {
    if ((item.keyEquivalentModifierMask & each.flag) != 0) keys.push_back(each.sign);
  }
  for (const char16_t unit : item.keyEquivalent) {
    keys.push_back(unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 32) : unit);
  }
  return keys;
}

bool anyItem(const NSMenuItem& /*item*/) { return true; }

}  // namespace

OpenMenu::OpenMenu(NSMenu& menu, IsEnabled isEnabled)
    : menu_(menu), isEnabled_(std::move(isEnabled)), places_(1) {
  first();
}

MenuOutcome OpenMenu::press(char32_t key) {
  static constexpr std::array<Key, 10> kKeys{{{30, &OpenMenu::up},
                                              {31, &OpenMenu::down},
                                              {28, &OpenMenu::leave},
                                              {29, &OpenMenu::enter},
                                              {1, &OpenMenu::first},
                                              {4, &OpenMenu::last},
                                              {13, &OpenMenu::choose},
                                              {3, &OpenMenu::choose},
                                              {U' ', &OpenMenu::choose},
                                              {27, &OpenMenu::close}}};
  const auto* const known = std::ranges::find(kKeys, key, &Key::code);
  if (known != kKeys.end()) return (this->*known->act)();
  goTo(key);
  return MenuOutcome::StaysOpen;
}

NSMenuItem* OpenMenu::highlighted() {
  const NSMenu& menu = *openMenus().back();
  const Place place = places_.back();
  const bool is = place && *place < menu.itemArray.size() && canBe(*menu.itemArray[*place]);
  return is ? menu.itemArray[*place].get() : nullptr;
}

std::vector<MenuView> OpenMenu::views() {
  std::vector<MenuView> views;
  for (const NSMenu* const menu : openMenus()) {
    views.push_back(viewOf(*menu, places_[views.size()]));
  }
  return views;
}

MenuOutcome OpenMenu::up() {
  const std::size_t count = openMenus().back()->itemArray.size();
  return move(places_.back().value_or(0) + count - 1, count - 1, anyItem);
}

MenuOutcome OpenMenu::down() {
  return places_.back() ? move(*places_.back() + 1, 1, anyItem) : first();
}

MenuOutcome OpenMenu::first() { return move(0, 1, anyItem); }

MenuOutcome OpenMenu::last() {
  const std::size_t count = openMenus().back()->itemArray.size();
  return move(count - 1, count - 1, anyItem);
}

MenuOutcome OpenMenu::enter() {
  const NSMenuItem* const item = highlighted();
  if (item == nullptr || !item->submenu) return MenuOutcome::StaysOpen;
  places_.emplace_back();
  return first();
}

MenuOutcome OpenMenu::leave() {
  if (places_.size() > 1) places_.pop_back();
  return MenuOutcome::StaysOpen;
}

MenuOutcome OpenMenu::choose() {
  const NSMenuItem* const item = highlighted();
  if (item == nullptr) return MenuOutcome::StaysOpen;
  return item->submenu ? enter() : MenuOutcome::Chooses;
}

MenuOutcome OpenMenu::close() { return MenuOutcome::Closes; }

void OpenMenu::goTo(char32_t letter) {
  const std::size_t behind = places_.back() ? *places_.back() + 1 : 0;
  move(behind, 1, [letter](const NSMenuItem& item) {
    return !item.title.empty() && lowered(item.title.front()) == lowered(letter);
  });
}

/// A submenu that has gone closes, and those within it.
std::vector<NSMenu*> OpenMenu::openMenus() {
  std::vector<NSMenu*> menus{&menu_};
  for (std::size_t level = 0; level + 1 < places_.size(); ++level) {
    const auto& items = menus.back()->itemArray;
    const Place place = places_[level];
    if (!place || *place >= items.size() || !items[*place]->submenu) break;
    menus.push_back(items[*place]->submenu.get());
  }
  places_.resize(menus.size());
  return menus;
}

bool OpenMenu::canBe(const NSMenuItem& item) const { return !item.hidden && isEnabled_(item); }

/// Once round from `from`, in the menu that was opened last.
template <class Matches>
MenuOutcome OpenMenu::move(std::size_t from, std::size_t step, const Matches& matches) {
  const auto& items = openMenus().back()->itemArray;
  for (std::size_t i = 0; i < items.size(); ++i) {
    const std::size_t place = (from + i * step) % items.size();
    if (!canBe(*items[place]) || !matches(*items[place])) continue;
    places_.back() = place;
    break;
  }
  return MenuOutcome::StaysOpen;
}

MenuView OpenMenu::viewOf(const NSMenu& menu, Place place) const {
  MenuView view;
  for (std::size_t i = 0; i < menu.itemArray.size(); ++i) {
    const NSMenuItem& item = *menu.itemArray[i];
    if (item.hidden) continue;
    if (place == i && canBe(item)) view.highlighted = view.lines.size();
    view.lines.push_back({.title = item.title,
                          .keyEquivalent = keyText(item),
                          .separator = item.separatorItem,
                          .checked = item.state != NSOffState,
                          .enabled = canBe(item),
                          .head = item.submenu != nullptr});
  }
  return view;
}

}  // namespace quorvane::desk
