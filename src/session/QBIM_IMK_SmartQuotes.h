#pragma once
// Before a key goes into the buffer it may turn into something better: curly quotes, dashes, a
// capital at the start of a sentence.

#include "src/session/QBIM_IMK_SessionRecord.h"

namespace quorvane {

/// 1: the key is consumed, its replacement on the way. `keyByte` is rewritten where one applies.
/// `event` isn't used.
std::int32_t Check_SmartQuotes(Instance& instance, EventRef event, BIMSessionRec* session,
                               std::uint8_t& keyByte);
/// Which of the three the main application and the switches of the front application allow.
std::uint32_t AutoCorrect_SmartChar_Flag(Instance& instance);
/// True: a quote `key` behind the byte `previous` opens.
[[nodiscard]] bool is_space_closing_char(std::uint8_t previous, std::uint8_t key);

}  // namespace quorvane
