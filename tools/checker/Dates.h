#pragma once
// The dates that the Input Menu puts in.

#include <cstdint>
#include <string>

#include "platform/DateFormatting.h"

namespace quorvane::checker {

/// The text of a date command, 17140 to 17142 and 17145 to 17149; empty for any other. `now` as
/// Clock::CFAbsoluteTimeGetCurrent gives it.
std::u16string dateText(std::uint32_t command, DateFormatting& dates, Seconds now);

}  // namespace quorvane::checker
