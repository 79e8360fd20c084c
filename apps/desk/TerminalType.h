#pragma once
// What the terminal's description says.

#include <string>

namespace quorvane::desk {

/// Why no desk can be shown on standard input and output; empty: it can.
std::string terminalProblem();

/// What gives the screen back: keypad, looks, cursor, the screen before. The description has been
/// loaded by whoever draws.
std::string terminalFarewell();

}  // namespace quorvane::desk
