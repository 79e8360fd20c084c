#pragma once
// What a key's byte says, and what a byte of a session's text says.

#include <cstdint>

namespace quorvane {

/// The key bytes that are more than a character.
enum KeyByte : std::uint8_t {
  kHomeKey = 1,
  kEnterKey = 3,
  kEndKey = 4,
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

/// Mac OS Roman.
enum RomanByte : std::uint8_t {
  kFormFeed = 12,
  kSpace = 32,
  kDoubleQuote = 34,
  kSingleQuote = 39,
  kHyphen = 45,
  kNoBreakSpace = 202,
  kEnDash = 208,
  kEmDash = 209,
  kLeftDoubleQuote = 210,
  kRightDoubleQuote = 211,
  kLeftSingleQuote = 212,
  kRightSingleQuote = 213,
};

}  // namespace quorvane
