#pragma once
// What a word is made of here: the small letters, the apostrophe, and the edge before the first.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quorvane::corrections {

using Letter = std::uint8_t;

inline constexpr Letter kApostrophe = 26;
inline constexpr Letter kEdge = 27;
inline constexpr std::size_t kLetters = 28;
/// Longer words are nobody's slip of the finger.
inline constexpr std::size_t kLongestWord = 24;

constexpr bool isSmallLetter(char c) { return c >= 'a' && c <= 'z'; }

constexpr bool isWordCharacter(char c) { return isSmallLetter(c) || c == '\''; }

/// Of a character that belongs to a word.
constexpr Letter letterOf(char c) { return c == '\'' ? kApostrophe : static_cast<Letter>(c - 'a'); }

constexpr char characterOf(Letter letter) {
  return letter == kApostrophe ? '\'' : letter == kEdge ? '^' : static_cast<char>('a' + letter);
}

/// Small letters and apostrophes only, one at least, not too many.
constexpr bool isWord(std::string_view text) {
  if (text.empty() || text.size() > kLongestWord) return false;
  for (const char c : text) {
    if (!isWordCharacter(c)) return false;
  }
  return true;
}

}  // namespace quorvane::corrections
