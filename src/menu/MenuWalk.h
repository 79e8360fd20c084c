#pragma once
// The one walk through a menu: depth first, an item before its submenu.

#include "platform/NSMenu.h"

namespace quorvane {

enum class Walk {
  GoesOn,
  LeavesLevel,  ///< the rest of this menu is left out
  Ends,
};

/// `visit` is given each item, and says how the walk goes on. Ends: so did the walk.
template <class Visit>
Walk walkMenu(NSMenu& menu, const Visit& visit) {
  for (const auto& item : menu.itemArray) {
    const Walk walk = visit(*item);
    if (walk == Walk::LeavesLevel) return Walk::GoesOn;
    if (walk == Walk::Ends) return walk;
    if (item->submenu && walkMenu(*item->submenu, visit) == Walk::Ends) return Walk::Ends;
  }
  return Walk::GoesOn;
}

/// The same for items without a submenu.
template <class Visit>
Walk walkLeaves(NSMenu& menu, const Visit& visit) {
  return walkMenu(menu,
                  [&visit](NSMenuItem& item) { return item.submenu ? Walk::GoesOn : visit(item); });
}

/// `change` is given the leaf of that tag, the first one of each level. No leaf has tag 0.
template <class Change>
void changeLeaf(NSMenu& menu, std::int64_t tag, const Change& change) {
  walkLeaves(menu, [&](NSMenuItem& leaf) {
    if (tag == 0 || leaf.tag != tag) return Walk::GoesOn;
    change(leaf);
    return Walk::LeavesLevel;
  });
}

}  // namespace quorvane
