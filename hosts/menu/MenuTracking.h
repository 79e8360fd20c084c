#pragma once
// The Input Menu while it is open, as a host shows it: from its opening to a choice or its end.

#include "platform/InputMethodKit.h"

namespace quorvane {

/// By its action and the controller's word. Separators can't be chosen.
[[nodiscard]] bool isEnabled(IMKInputController& controller, const NSMenuItem& item);

class MenuTracking {
 public:
  /// Opens the menu of the controller that has the focus, which brings it up to date.
  explicit MenuTracking(IMKInputController& controller);
  /// Closes it.
  ~MenuTracking();
  MenuTracking(const MenuTracking&) = delete;
  MenuTracking& operator=(const MenuTracking&) = delete;

  /// Null where the controller has none.
  [[nodiscard]] NSMenu* menu() const { return menu_; }
  /// Sends the item's action; the item itself may be gone afterwards. False, and nothing happens,
  /// where it can't be chosen or has a submenu.
  bool choose(NSMenuItem& item);

 private:
  IMKInputController& controller_;
  NSMenu* menu_;
};

}  // namespace quorvane
