#include "src/menu/InputMenu.h"

#include "src/menu/MenuTable.h"
#include "src/menu/MenuWalk.h"

namespace quorvane {
namespace {

void setEnabled(NSMenuItem& item, bool enable) {
  if (enable) {
    Set_MenuItem_ActionEnable(item, item.tag);
  } else {
    item.action.clear();
  }
}

}  // namespace

NSMenu* Quorvane_InputAppDelegate_menu(Instance& instance) {
  return instance.state<InputMenuState>().qorvinputMenu;
}

void do_Set_SubMenuActions(const void* /*ignored*/, NSMenuItem& item) {
  item.action = kSubMenuActions;
}

void Set_MenuItem_ActionEnable(NSMenuItem& item, std::int64_t /*tag*/) {
  do_Set_SubMenuActions(nullptr, item);
}

void EnableAll_NSMenuItems(Instance& instance, bool enable) {
  if (NSMenu* const menu = Quorvane_InputAppDelegate_menu(instance)) {
    Enable_All_walkMenu(*menu, enable);
  }
}

void Enable_All_walkMenu(NSMenu& menu, bool enable) {
  walkLeaves(menu, [enable](NSMenuItem& leaf) {
    if (leaf.tag != 0) setEnabled(leaf, enable);
    return Walk::GoesOn;
  });
}

void EnableNSMenuItemTag(Instance& instance, std::int64_t tag, bool enable) {
  if (NSMenu* const menu = Quorvane_InputAppDelegate_menu(instance)) {
    Enable_walkMenu(*menu, tag, enable);
  }
}

void EnableNSMenuItem(Instance& instance, std::uint32_t commandID, bool enable) {
  EnableNSMenuItemTag(instance, Convert_CommandIDToTag(commandID), enable);
}

void Enable_walkMenu(NSMenu& menu, std::int64_t tag, bool enable) {
  if (tag == 0) return;
  walkMenu(menu, [=](NSMenuItem& item) {
    if (item.tag != tag) return Walk::GoesOn;
    setEnabled(item, enable);
    return Walk::LeavesLevel;
  });
}

void SetHidden_NSMenuItem(Instance& instance, std::int64_t tag, bool hidden) {
  if (NSMenu* const menu = Quorvane_InputAppDelegate_menu(instance)) {
    SetHidden_walkMenu(*menu, tag, hidden);
  }
}

void SetHidden_walkMenu(NSMenu& menu, std::int64_t tag, bool hidden) {
  changeLeaf(menu, tag, [hidden](NSMenuItem& leaf) { leaf.hidden = hidden; });
}

void NS_CheckMark_MenuItem_FromTag(Instance& instance, std::int64_t tag, bool on) {
  if (NSMenu* const menu = Quorvane_InputAppDelegate_menu(instance)) {
    CheckMark_walkMenu(*menu, tag, on);
  }
}

void NS_CheckMark_MenuItem(Instance& instance, std::uint32_t commandID, bool on) {
  NS_CheckMark_MenuItem_FromTag(instance, Convert_CommandIDToTag(commandID), on);
}

void CheckMark_walkMenu(NSMenu& menu, std::int64_t tag, bool on) {
  changeLeaf(menu, tag, [on](NSMenuItem& leaf) { leaf.state = on ? NSOnState : NSOffState; });
}

bool NS_Get_CheckMark_MenuItem(Instance& instance, std::uint32_t commandID) {
  NSMenu* const menu = Quorvane_InputAppDelegate_menu(instance);
  return menu != nullptr && Get_CheckMark_walkMenu(*menu, Convert_CommandIDToTag(commandID));
}

bool Get_CheckMark_walkMenu(NSMenu& menu, std::int64_t tag) {
  if (tag == 0) return false;
  return walkLeaves(menu, [tag](const NSMenuItem& leaf) {
           return leaf.tag == tag && leaf.state != NSOffState ? Walk::Ends : Walk::GoesOn;
         }) == Walk::Ends;
}

}  // namespace quorvane
