#include "hosts/menu/MainMenu.h"

#include <simdjson.h>
#include <unicode/unistr.h>

#include <stdexcept>

namespace quorvane {
namespace {

using simdjson::dom::element;

std::u16string fromUtf8(std::string_view text) {
  const auto units = icu::UnicodeString::fromUTF8({text.data(), static_cast<int>(text.size())});
  return {units.getBuffer(), static_cast<std::size_t>(units.length())};
}

std::u16string titleOf(const element& of) { return fromUtf8(of["title"].get_string()); }

std::unique_ptr<NSMenu> makeMenu(const element& of);

// The platform gives an item with a submenu an action, where it hasn't got one.
void addSubmenu(NSMenuItem& item, const element& of) {
  item.submenu = makeMenu(of);
  if (item.action.empty()) item.action = "submenuAction:";
}

std::unique_ptr<NSMenuItem> makeItem(const element& of) {
  auto item = std::make_unique<NSMenuItem>();
  item->separatorItem = of.is_string();
  if (item->separatorItem) return item;
  item->title = titleOf(of);
  if (const auto tag = of["tag"].get_int64(); tag.error() == simdjson::SUCCESS) {
    item->tag = tag.value_unsafe();
  }
  if (const auto action = of["action"].get_string(); action.error() == simdjson::SUCCESS) {
    item->action = action.value_unsafe();
  }
  if (of["items"].error() == simdjson::SUCCESS) addSubmenu(*item, of);
  return item;
}

std::unique_ptr<NSMenu> makeMenu(const element& of) {
  auto menu = std::make_unique<NSMenu>();
  menu->title = titleOf(of);
  for (const element item : of["items"].get_array()) menu->itemArray.push_back(makeItem(item));
  return menu;
}

}  // namespace

std::unique_ptr<NSMenu> menuFromJSON(std::string_view json) {
  try {
    simdjson::dom::parser parser;
    return makeMenu(parser.parse(json.data(), json.size()));
  } catch (const simdjson::simdjson_error& error) {
    throw std::runtime_error(std::string("the menu can't be read: ") + error.what());
  }
}

std::unique_ptr<NSMenu> loadMainMenu() { return menuFromJSON(kMainMenuJSON); }

}  // namespace quorvane
