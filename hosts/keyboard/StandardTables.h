#pragma once
// The tables that the layouts made here have: one for each combination of shift, caps lock and
// option that types something of its own.

#include "hosts/keyboard/LayoutWriter.h"

namespace quorvane::keyboard {

enum StandardTable : std::uint8_t { kPlain, kShift, kCaps, kOption, kOptionShift, kCapsOption };
inline constexpr std::size_t kStandardTables = 6;

/// Empty but for the special keys, which every table has. Shift goes before caps lock; with command
/// or control held option counts for nothing.
LayoutTables standardTables();

}  // namespace quorvane::keyboard
