#pragma once
// A menu as it is shown, as a plain record.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quorvane::desk {

struct MenuLine {
  std::u16string title;
  std::u16string keyEquivalent;  ///< as it is written; empty: none
  bool separator = false;
  bool checked = false;
  bool enabled = false;
  bool head = false;  ///< of a submenu
};

struct MenuView {
  std::vector<MenuLine> lines;
  std::optional<std::size_t> highlighted;
};

}  // namespace quorvane::desk
