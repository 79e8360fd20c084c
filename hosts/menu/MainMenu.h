#pragma once
// The Input Menu as it ships: what the nib "MainMenu" holds on every host, made of data/menu.json.

#include <memory>
#include <string_view>

#include "platform/NSMenu.h"

namespace quorvane {

/// The text of data/menu.json, which the program carries.
extern const std::string_view kMainMenuJSON;

/// A new menu each time.
std::unique_ptr<NSMenu> loadMainMenu();

/// Of the same form: `"-"` is a separator, an item with "items" has a submenu of its own title.
/// Throws std::runtime_error where the text isn't a menu.
std::unique_ptr<NSMenu> menuFromJSON(std::string_view json);

}  // namespace quorvane
