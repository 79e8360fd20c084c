#include "hosts/ibus/MenuProperties.h"

#include <utility>

#include "hosts/ibus/FrameworkText.h"
#include "hosts/menu/MenuTracking.h"

namespace quorvane::ibus {
namespace {

std::string keyOf(const MenuPlace& place) {
  std::string key = "menu";
  for (const std::size_t index : place) key += "." + std::to_string(index);
  return key;
}

}  // namespace

IBusPropList* MenuProperties::make(IMKInputController& controller) {
  entries_.clear();
  const NSMenu* const menu = controller.menu();
  return menu != nullptr ? listOf(controller, *menu, {}, Level::Menu) : ibus_prop_list_new();
}

IBusPropList* MenuProperties::listOf(IMKInputController& controller, const NSMenu& menu,
                                     MenuPlace place, Level level) {
  IBusPropList* const list = ibus_prop_list_new();
  place.push_back(0);
  for (const auto& item : menu.itemArray) {
    if (!item->hidden) append(list, controller, *item, place, level);
    ++place.back();
  }
  return list;
}

void MenuProperties::append(IBusPropList* list, IMKInputController& controller,
                            const NSMenuItem& item, const MenuPlace& place, Level level) {
  const auto add = [&](IBusPropType type, bool sensitive, IBusPropList* submenu) {
    ibus_prop_list_append(list, propertyOf(item, type, sensitive, place, submenu));
  };
  if (item.separatorItem) return add(PROP_TYPE_SEPARATOR, true, nullptr);
  if (!item.submenu) {
    const IBusPropType type = item.state == NSOnState ? PROP_TYPE_TOGGLE : PROP_TYPE_NORMAL;
    return add(type, isEnabled(controller, item), nullptr);
  }
  if (level == Level::Menu) {
    return add(PROP_TYPE_MENU, true, listOf(controller, *item.submenu, place, Level::Submenu));
  }
  add(PROP_TYPE_NORMAL, false, nullptr);
  MenuPlace deeper = place;
  deeper.push_back(0);
  for (const auto& each : item.submenu->itemArray) {
    if (!each->hidden) append(list, controller, *each, deeper, level);
    ++deeper.back();
  }
}

IBusProperty* MenuProperties::propertyOf(const NSMenuItem& item, IBusPropType type, bool sensitive,
                                         const MenuPlace& place, IBusPropList* submenu) {
  const std::string key = keyOf(place);
  entries_[key] = {place, item.title};
  const IBusPropState state = item.state == NSOnState ? PROP_STATE_CHECKED : PROP_STATE_UNCHECKED;
  return ibus_property_new(key.c_str(), type, newText(item.title), nullptr, nullptr,
                           static_cast<gboolean>(sensitive), TRUE, state, submenu);
}

NSMenuItem* MenuProperties::find(NSMenu& menu, const std::string& property) const {
  const auto entry = entries_.find(property);
  if (entry == entries_.end()) return nullptr;
  NSMenu* open = &menu;
  NSMenuItem* item = nullptr;
  for (const std::size_t index : entry->second.place) {
    if (open == nullptr || index >= open->itemArray.size()) return nullptr;
    item = open->itemArray[index].get();
    open = item->submenu.get();
  }
  return item != nullptr && item->title == entry->second.title ? item : nullptr;
}

}  // namespace quorvane::ibus
