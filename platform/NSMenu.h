#pragma once
// NSMenu and NSMenuItem: plain records that the logic changes and a host draws. A host looks at
// them anew each time it shows the menu, and tells the menu's delegate of what happens to it.

#include <memory>
#include <string>
#include <vector>

#include "platform/AppKitEvents.h"

namespace quorvane {

struct NSMenu;

inline constexpr std::int64_t NSOffState = 0;
inline constexpr std::int64_t NSOnState = 1;  ///< a check mark

struct NSMenuItem {
  std::u16string title;
  std::int64_t tag = 0;
  /// A selector, `CheckAll:`. Empty: none, and the item can't be chosen.
  std::string action;
  std::int64_t state = NSOffState;
  bool hidden = false;
  bool separatorItem = false;
  std::unique_ptr<NSMenu> submenu;  ///< null: the item is a leaf
  std::u16string keyEquivalent;     ///< empty: none
  /// Of NSEvent's modifier flags.
  std::uint32_t keyEquivalentModifierMask = NSEventModifierFlagCommand;
  std::uint32_t commandID = 0;  ///< what the Carbon menu knows it by
};

/// Whom a menu tells of itself.
class NSMenuDelegate {
 public:
  virtual ~NSMenuDelegate() = default;

  /// Before `menuWillOpen`.
  virtual void menuNeedsUpdate(NSMenu& menu) = 0;
  virtual void menuWillOpen(NSMenu& menu) = 0;
  virtual void menuDidClose(NSMenu& menu) = 0;
  /// True: the key equivalent is taken.
  virtual bool performKeyEquivalent(const NSEvent& event) = 0;

  // Notifications of the menu.
  virtual void menuWillSendAction(const NSMenuItem& item) = 0;
  virtual void menuDidSendAction(NSMenu& menu) = 0;
  virtual void DidEndTracking(NSMenu& menu) = 0;
};

struct NSMenu {
  std::u16string title;
  std::vector<std::unique_ptr<NSMenuItem>> itemArray;
  NSMenuDelegate* delegate = nullptr;
};

// Carbon's view of a menu: items by their position, from 1.

inline constexpr OSStatus menuItemNotFoundErr = -5623;

/// Null where there is no such item.
inline NSMenuItem* itemAtPosition(NSMenu& menu, std::uint32_t position) {
  const bool inside = position >= 1 && position <= menu.itemArray.size();
  return inside ? menu.itemArray[position - 1].get() : nullptr;
}
inline OSStatus SetMenuItemCommandID(NSMenu& menu, std::uint32_t position,
                                     std::uint32_t commandID) {
  NSMenuItem* const item = itemAtPosition(menu, position);
  if (item == nullptr) return menuItemNotFoundErr;
  item->commandID = commandID;
  return noErr;
}
/// Null for an item without one.
inline OSStatus GetMenuItemHierarchicalMenu(NSMenu& menu, std::uint32_t position,
                                            NSMenu*& submenuOut) {
  const NSMenuItem* const item = itemAtPosition(menu, position);
  if (item == nullptr) return menuItemNotFoundErr;
  submenuOut = item->submenu.get();
  return noErr;
}

}  // namespace quorvane
