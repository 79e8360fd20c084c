#pragma once
// The Input Menu as the framework's panel can show it: a list of properties with one level of
// submenus, where items of a deeper level stand behind a heading. What is shown may be older than
// the menu: a choice counts where the item of that place still has that title and may be chosen.

#include <ibus.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/InputMethodKit.h"

namespace quorvane::ibus {

/// Where an item is: its place in the menu, in the submenu there, and so on.
using MenuPlace = std::vector<std::size_t>;

class MenuProperties {
 public:
  /// A new list, floating.
  IBusPropList* make(IMKInputController& controller);
  /// The item of a property that was chosen, in the menu as it is now; null: it has gone.
  [[nodiscard]] NSMenuItem* find(NSMenu& menu, const std::string& property) const;

 private:
  struct Entry {
    MenuPlace place;
    std::u16string title;
  };
  enum class Level : std::uint8_t { Menu, Submenu };

  IBusPropList* listOf(IMKInputController& controller, const NSMenu& menu, MenuPlace place,
                       Level level);
  void append(IBusPropList* list, IMKInputController& controller, const NSMenuItem& item,
              const MenuPlace& place, Level level);
  IBusProperty* propertyOf(const NSMenuItem& item, IBusPropType type, bool sensitive,
                           const MenuPlace& place, IBusPropList* submenu);

  std::map<std::string, Entry> entries_;  ///< by the keys of the properties
};

}  // namespace quorvane::ibus
