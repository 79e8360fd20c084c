#pragma once

#include <string>

namespace quorvane::desktop {

/// A text from elsewhere as one line that does nothing to a terminal: a line feed is a blank, every
/// other control character, those of eight bits included, a question mark.
std::string printableLine(const std::string& text);

}  // namespace quorvane::desktop
