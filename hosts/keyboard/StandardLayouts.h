#pragma once
// Layouts made here, from tables of what is printed on the keys; each is made once and then kept.

#include "hosts/keyboard/LayoutWriter.h"

namespace quorvane::keyboard {

/// US. Option changes nothing on any key but the letters, where it types the platform's own
/// characters; no dead keys.
LayoutData usLayout();
/// US with the platform's dead keys under option: e acute, u diaeresis, i circumflex, n tilde,
/// ` grave.
LayoutData usLayoutWithDeadKeys();
/// Dvorak: V lies on key code 47.
LayoutData dvorakLayout();

}  // namespace quorvane::keyboard
