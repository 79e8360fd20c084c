#pragma once
// A menu while somebody goes through it by keys: which submenus are open and what is highlighted.
// Nothing but places is kept, since the menu may be built anew meanwhile.

#include <functional>
#include <optional>
#include <vector>

#include "apps/desk/MenuView.h"
#include "platform/NSMenu.h"

namespace quorvane::desk {

enum class MenuOutcome {
  StaysOpen,
  Closes,
  Chooses,  ///< the highlighted item
};

class OpenMenu {
 public:
  using IsEnabled = std::function<bool(const NSMenuItem& item)>;

  /// With the first item highlighted that can be. The menu outlives this.
  OpenMenu(NSMenu& menu, IsEnabled isEnabled);

  /// A character, or the classic code of a key without one: arrows move, open and close submenus,
  /// Return and the space bar choose, Escape closes, a letter goes to the next item with it.
  MenuOutcome press(char32_t key);
  /// Null: none is.
  [[nodiscard]] NSMenuItem* highlighted();
  /// The menu itself, then each open submenu.
  [[nodiscard]] std::vector<MenuView> views();

 private:
  struct Key {
    char32_t code;
    MenuOutcome (OpenMenu::*act)();
  };
  using Place = std::optional<std::size_t>;

  MenuOutcome up();
  MenuOutcome down();
  MenuOutcome first();
  MenuOutcome last();
  MenuOutcome enter();
  MenuOutcome leave();
  MenuOutcome choose();
  MenuOutcome close();
  void goTo(char32_t letter);

  [[nodiscard]] std::vector<NSMenu*> openMenus();
  [[nodiscard]] bool canBe(const NSMenuItem& item) const;
  template <class Matches>
  MenuOutcome move(std::size_t from, std::size_t step, const Matches& matches);
  [[nodiscard]] MenuView viewOf(const NSMenu& menu, Place place) const;

  NSMenu& menu_;
  IsEnabled isEnabled_;
  std::vector<Place> places_;  ///< of the highlight: in the menu, and in each open submenu
};

}  // namespace quorvane::desk
