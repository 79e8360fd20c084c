#pragma once
// The date items: their titles are the present date in seven forms, as old as the menu's opening.

#include <string>

#include "src/base/Instance.h"

namespace quorvane {

/// All seven.
void NS_Set_Date_Time_Menu(Instance& instance);
/// Styles 1 to 7; any other is the long date.
void Get_Date_NSString_Menu(Instance& instance, std::uint32_t style, std::uint32_t commandID);
/// A Pascal string; `buffer` has 256 bytes. Styles 1 to 6.
void Get_Date_String(Instance& instance, std::uint32_t style, std::uint8_t* buffer);
/// The present date and time in UTC, whatever the arguments; the first 64 bytes also to `buffer`,
/// unless it is null.
std::u16string GetUTCDateString(Instance& instance, std::uint64_t seconds, std::uint32_t option,
                                std::uint8_t* buffer, std::uint32_t extra);

}  // namespace quorvane
