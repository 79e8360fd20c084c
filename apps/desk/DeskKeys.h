#pragma once
// What a key of the terminal means to the desk.

#include <optional>

#include "platform/Units.h"

namespace quorvane::desk {

enum class DeskCommand { Type, ToggleAnnotation, TapShift, Menu, Quit };

struct DeskKey {
  DeskCommand command = DeskCommand::Type;
  char32_t character = 0;       ///< to type: a character, or the classic code of a key without one
  std::uint32_t modifiers = 0;  ///< in addition to those that the character needs
  Seconds time{};               ///< when it came: it may have to wait for the key before it
};

/// A key with a character, control characters included. Empty: the desk doesn't know it.
std::optional<DeskKey> keyOfCharacter(char32_t character);
/// A function key by its ncurses code.
std::optional<DeskKey> keyOfCode(int code);

}  // namespace quorvane::desk
