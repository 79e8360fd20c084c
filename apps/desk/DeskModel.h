#pragma once
// What the desk shows, as a plain record.

#include <optional>
#include <string>
#include <vector>

#include "apps/desk/MenuView.h"
#include "platform/MacTypes.h"
#include "tools/checker/documents/WindowText.h"

namespace quorvane::desk {

struct PanelEntry {
  char label = ' ';  ///< the digit that takes it
  std::u16string text;
  bool highlighted = false;
};

/// The candidates panel.
struct PanelView {
  bool column = false;  ///< otherwise a row
  std::vector<PanelEntry> entries;
  NSRect frame;  ///< points, as below
  bool moreBefore = false;
  bool moreBehind = false;  ///< than the entries
};

struct AnnotationView {
  NSRect frame;
  std::u16string text;
};

/// The main application's popup: suggestions, the first taken by 1, and so on.
struct PopupView {
  NSPoint corner;  ///< top left: below the line that it is about; points, origin top left
  std::vector<std::string> suggestions;  ///< ASCII
};

/// One thing that the side tells; its lines are broken where they are too long.
struct Fact {
  std::string title;
  std::vector<std::u16string> lines;
};

struct DeskModel {
  std::u16string text;  ///< of the document; ranges in UTF-16 units
  NSRange selection;
  std::optional<NSRange> marked;
  std::optional<PanelView> panel;
  std::optional<AnnotationView> annotation;
  std::optional<PopupView> popup;
  std::optional<checker::WindowText> window;  ///< the main application's own, over everything
  std::vector<MenuView> menus;  ///< the Input Menu while it is open, and its open submenus
  std::vector<Fact> facts;
};

}  // namespace quorvane::desk
