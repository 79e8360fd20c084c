#pragma once
// The private copy of the sentence being typed: it follows typing, backspace and arrows, and
// forgets its content at sentence boundaries once it grows long. No operation here allocates.

#include "src/session/QBIM_IMK_Sessions.h"

namespace quorvane {

/// The key bytes that are more than a character.
enum KeyByte : std::uint8_t {
  kEnterKey = 3,
  kBackspaceKey = 8,
  kTabKey = 9,
  kPageUpKey = 11,
  kPageDownKey = 12,
  kReturnKey = 13,
  kEscapeKey = 27,
  kLeftArrowKey = 28,
  kRightArrowKey = 29,
  kUpArrowKey = 30,
  kDownArrowKey = 31,
  kDeleteKey = 127,
};

/// Updates the buffer for one key and tells the interactive machinery. Nonzero: the key is
/// consumed. A null session is made and activated first.
std::int32_t BIMHandleInput(Process& process, BIMSessionRec* session, std::uint8_t keyByte);

}  // namespace quorvane
