#pragma once
// The part of Mac OS Roman that a fix may hold: ASCII, dashes and curly quotes. The session text
// has no other byte from 128 up that stands for one known character: what was typed outside ASCII
// arrives there as the first byte of its UTF-8 form.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::checker {

inline constexpr std::uint8_t kFirstSmartChar = 208;  ///< en dash
inline constexpr std::uint8_t kEmDash = 209;
inline constexpr std::uint8_t kRightDoubleQuote = 211;
inline constexpr std::uint8_t kLeftSingleQuote = 212;
inline constexpr std::uint8_t kRightSingleQuote = 213;  ///< also the curly apostrophe
inline constexpr std::uint8_t kLastSmartChar = 213;

constexpr bool isSmartChar(std::uint8_t byte) {
  return byte >= kFirstSmartChar && byte <= kLastSmartChar;
}

/// Two hyphens that have become a dash lie in the session text as the first hyphen and the dash,
/// while the dash has taken the hyphen's place in the document.
constexpr bool isDashOfHyphens(std::uint8_t byte, std::uint8_t next) {
  return byte == '-' && next == kEmDash;
}

/// How many characters they are in the document, if none is outside of the above.
std::size_t documentLength(std::span<const std::uint8_t> bytes);

/// As a document holds it: a return is a line feed there. Empty where a byte is none of the above.
std::optional<std::string> documentText(std::span<const std::uint8_t> bytes);

/// A byte for each unit: what is none of the above gets one that stands for some letter.
std::vector<std::uint8_t> sessionBytes(std::u16string_view text);

}  // namespace quorvane::checker
