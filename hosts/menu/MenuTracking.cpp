#include "hosts/menu/MenuTracking.h"

namespace quorvane {
namespace {

NSMenuDelegate* delegateOf(const NSMenu* menu) {
  return menu != nullptr ? menu->delegate : nullptr;
}

}  // namespace

bool isEnabled(IMKInputController& controller, const NSMenuItem& item) {
  return !item.separatorItem && !item.action.empty() && controller.validateMenuItem(item);
}

MenuTracking::MenuTracking(IMKInputController& controller)
    : controller_(controller), menu_(controller.menu()) {
  NSMenuDelegate* const delegate = delegateOf(menu_);
  if (delegate == nullptr) return;
  delegate->menuNeedsUpdate(*menu_);
  delegate->menuWillOpen(*menu_);
}

MenuTracking::~MenuTracking() {
  NSMenuDelegate* const delegate = delegateOf(menu_);
  if (delegate == nullptr) return;
  delegate->menuDidClose(*menu_);
  delegate->DidEndTracking(*menu_);
}

bool MenuTracking::choose(NSMenuItem& item) {
  if (menu_ == nullptr || item.submenu || !isEnabled(controller_, item)) return false;
  NSMenuDelegate* const delegate = delegateOf(menu_);
  if (delegate != nullptr) delegate->menuWillSendAction(item);
  const std::string action = item.action;
  controller_.doCommandBySelectorCommandDictionary(action, {&item, item.title});
  if (delegate != nullptr) delegate->menuDidSendAction(*menu_);
  return true;
}

}  // namespace quorvane
