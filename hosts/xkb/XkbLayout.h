#pragma once
// The keymap of XKB rule names as a keyboard layout, with the platform's virtual key codes. Shift
// and caps lock are XKB's, option is its third level (AltGr). Dead keys compose by the compose
// table of en_US.UTF-8.

#include <string>

#include "hosts/keyboard/LayoutWriter.h"

namespace quorvane::xkb {

/// The values are rule names of XKB, each possibly empty: its default counts then.
struct RuleNames {
  std::string rules;
  std::string model;
  std::string layout;
  std::string variant;
  std::string options;
  bool operator==(const RuleNames&) const = default;
};

/// `us`, or with a variant `us(dvorak)`.
RuleNames parseLayoutName(const std::string& name);

/// Of $QUORVANE_LAYOUT, else of the $XKB_DEFAULT_ variables, else of the system's keyboard file
/// (`file`, lines such as XKBLAYOUT="de"), else of none. Several layouts: the first counts. A file
/// that can't be read counts as missing.
RuleNames chosenLayout(const std::string& file = "/etc/default/keyboard");

/// Null where XKB knows no such keymap.
keyboard::LayoutData layoutOf(const RuleNames& names);

/// Every printable ASCII character lies on some key, or is what a dead key leaves behind.
bool typesAscii(const keyboard::LayoutData& layout);

}  // namespace quorvane::xkb
