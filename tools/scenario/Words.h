#pragma once
// The words of a scenario line: how text, numbers and keys are written, and how what was observed
// is written back in the same way.

#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Units.h"

namespace quorvane::scenario {

/// A statement that can't be read, or that speaks of something that isn't there.
class BadStatement : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Code points; a raw byte, written \d{210}, stands at kRawByte + 210.
using Literal = std::u32string;
inline constexpr char32_t kRawByte = 0x200000;

struct Word {
  std::string text;     ///< as it stands in the line, without the quotes of a quoted one
  Literal literal;      ///< of a quoted word
  bool quoted = false;  ///< "..."
  char mark = 0;        ///< the `,` or `:` behind it
};

/// Splits at spaces, up to a `#`. Throws BadStatement.
std::vector<Word> splitWords(std::string_view line);

/// Decimal with an optional minus, 0x and hexadecimal, or a four-character code, 'QVPX'.
std::optional<std::int64_t> parseNumber(std::string_view word);
std::optional<std::uint32_t> parseHex(std::string_view word);
std::optional<double> parseMeasure(std::string_view word);

/// `2026-03-04 15:09:26`, as it is counted since the beginning of 2001. Throws BadStatement.
Seconds parseDate(const std::string& text);

struct Keystroke {
  char32_t character = 0;           ///< a character or a classic code; 0: modifiers alone
  std::uint32_t modifierFlags = 0;  ///< of the event, without those that the key itself needs
};
/// `x`, `left`, `command+shift+a`, `shift+escape`; modifiers alone: `shift`, `command+option`,
/// `none`.
std::optional<Keystroke> parseKeystroke(std::string_view word);

/// ASCII, and every other byte raw.
Literal literalFromBytes(std::span<const std::uint8_t> bytes);
Literal literalFromBytes(std::string_view bytes);
Literal literalFromUtf16(std::u16string_view text);
/// UTF-8, raw bytes as they are.
std::string toBytes(const Literal& literal);
/// A raw byte becomes the character of its number.
std::u16string toUtf16(const Literal& literal);
/// As a scenario would write it, without the quotes.
std::string describe(const Literal& literal);
/// Four characters in quotes, or decimal where they can't be printed.
std::string describeCode(std::uint32_t code);

/// Which word it is of those that `from` has, divided by spaces. Throws BadStatement.
std::size_t choose(std::string_view word, std::string_view from);

/// Whether `text` is `pattern`, in which each `*` stands for any run of characters.
bool matches(std::string_view pattern, std::string_view text);

}  // namespace quorvane::scenario
