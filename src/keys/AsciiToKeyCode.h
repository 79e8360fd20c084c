#pragma once
// From a character to the key that types it. Every look-up walks the layout data that the platform
// hands out at that moment, so that a switch of layout takes effect at the next one. Only 7-bit
// characters can be found.

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "src/base/Instance.h"

namespace quorvane {

/// No key yields the character.
inline constexpr std::uint16_t kNoKeyCode = 0xFFFF;

/// Key code of the character's low byte.
std::uint16_t AsciiToKeyCode(Instance& instance, std::uint16_t character);
std::uint16_t ComposeEventMessage(Instance& instance, std::uint32_t character,
                                  std::uint16_t* modifiersOut);
/// Stores the classic modifier word that goes with the key, with bit 0x0080 always set; null: the
/// word isn't wanted. The four curly quotes have a word of their own and no key code.
std::uint16_t Get_keyCodeForChar(Instance& instance, std::uint16_t character,
                                 std::uint16_t* modifiersOut);
/// The answers are set to 1 where the character needs that modifier, never cleared.
std::uint32_t do_keyCodeForChar(Instance& instance, std::int8_t character, std::int32_t& shiftOut,
                                std::int32_t& optionOut);
std::uint32_t keyCodeForCharWithLayout(Instance& instance, std::int8_t character,
                                       std::span<const std::uint8_t> layoutBytes,
                                       std::int32_t& shiftOut, std::int32_t& optionOut);
void checkModifiers(Instance& instance, std::int8_t character,
                    std::span<const std::uint8_t> layoutBytes, std::uint16_t keyCode,
                    std::int32_t& shiftOut, std::int32_t& optionOut);

/// One unit: what a menu shows for the key. Empty where there is no layout.
std::optional<std::u16string> createStringForKey(Instance& instance, std::uint16_t keyCode);
/// Layout data of the current keyboard input source, or null.
std::shared_ptr<const std::vector<std::uint8_t>> Get_KeyBoardLayout_Ptr(Instance& instance);
/// There is no table: 0.
std::int32_t InitAscii2KeyCodeTable();

}  // namespace quorvane
