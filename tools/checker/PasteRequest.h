#pragma once
// Asks the input method to press the paste keys in a client, beside a main application that runs.

#include <cstdint>

namespace quorvane::checker {

/// As message ids.
enum class Paste : std::int32_t { Plain = 250, Special = 251 };

/// Arms the clipboard's restore and sends the request for the process `pid`; 0: the application
/// that the tool record names. What is on the clipboard is the client's. Throws std::runtime_error
/// where no main application or more or less than one input method runs.
void requestPaste(Paste paste, std::int32_t pid);

}  // namespace quorvane::checker
